# Writes to standard output and standard error: plain, long, non-ASCII and raw bytes.
import sys


class Vorlith:
    def XPluginStart(self):
        print("hello from a script")
        sys.stderr.write("to the log\n")
        sys.stdout.write("x" * 10000)
        sys.stdout.write("\n")
        sys.stderr.write("y" * 5000 + "\n")
        sys.stderr.write("after the long one\n")
        print(u"caf\u00e9")
        if sys.version_info[0] >= 3:
            sys.stdout.write(b"raw \xff\xfe bytes\n")
        else:
            sys.stdout.write("raw \xff\xfe bytes\n")
        sys.stdout.flush()
        return "Output", "vorlith.test.output", "Writes to stdout and stderr"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass
