# Has XPluginStart and nothing else.


class Vorlith:
    def XPluginStart(self):
        return "OnlyStart", "vorlith.test.onlystart", "Lacks the other methods"
