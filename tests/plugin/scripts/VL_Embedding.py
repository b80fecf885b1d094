# What an embedded interpreter must give a script: the standard library's extension
# modules, no signal handlers of Python's own, and threads that run between callbacks.
import os
import signal
import sys
import threading

import array
import ctypes
import json
import math
import select
import socket

print("stdlib %s %s %s" % (math.sqrt(16.0), json.dumps([1]), socket.AF_INET > 0))
# Python's own start would set SIGPIPE to "ignore"; the simulator's setting must stay.
print("SIGPIPE left as it was: %s" % (signal.getsignal(signal.SIGPIPE) == signal.SIG_DFL))

MARKER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "thread_ran.txt")


def work():
    # Runs only while the simulator works between callbacks, if the lock is let go.
    import time
    time.sleep(0.05)
    print("printed from a thread")
    with open(MARKER, "w") as f:
        f.write("ran")


class Vorlith:
    def XPluginStart(self):
        return "Embedding", "vorlith.test.embedding", "Checks the embedding"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        thread = threading.Thread(target=work)
        thread.daemon = True
        thread.start()
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass
