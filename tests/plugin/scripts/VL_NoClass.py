# Defines no Vorlith class.
print("VL_NoClass imported")


class SomethingElse:
    pass
