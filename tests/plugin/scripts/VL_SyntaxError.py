# Cannot even be compiled.
class Vorlith:
    def XPluginStart(self:
        pass
