# Its Vorlith class cannot be instantiated.


class Vorlith:
    def __init__(self):
        raise ValueError("no instance today")
