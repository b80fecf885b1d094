# The control panel test's writer: lines for the display and print lists, on messages.
import sys
import threading

import TembrookUtilities


class Vorlith:
    def XPluginStart(self):
        # Before the control panel exists: kept until its display list is built.
        TembrookUtilities.TembrookDisplay("early " + "d" * 300)
        return "VL_PanelPrinter", "vorlith.test.printer", "Writes to the control panel"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        if message == 0x7001:
            TembrookUtilities.TembrookPrint("p" * 100)
        elif message == 0x7002:
            try:
                TembrookUtilities.TembrookDisplay(5)
            except TypeError:
                print("display refused a number")
            TembrookUtilities.TembrookPrint(b"bytes \xff\xfe not UTF-8")
            TembrookUtilities.TembrookPrint("")
            sys.stdout.write("x" * 10000000)  # 10 MB in one write
            sys.stdout.write("\n")
            for i in range(100000):  # and 10 MB more in lines
                print("line %06d " % i + "y" * 88)
            TembrookUtilities.TembrookPrint("last line")
        elif message == 0x7004:
            print("standard output")
        elif message == 0x7005:  # a thread's line waits for the simulator's thread
            thread = threading.Thread(target=sys.stdout.write, args=("from a thread",))
            thread.start()
            thread.join()
        elif message == 0x7003:
            TembrookUtilities.TembrookClearPrint()
            TembrookUtilities.TembrookClearDisplay()
