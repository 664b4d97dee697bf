"""Runs a command with some of its streams on a terminal, and prints what appears there.

on_terminal.py COLUMNS STREAMS COMMAND...   STREAMS: of "in", "out", "err", with + between them

The others are /dev/null. What this script reads is typed once the command has written something.
"""

import fcntl
import os
import pty
import struct
import subprocess
import sys
import termios

END_OF_INPUT = b"\n\x04\x04"  # the first one may only end a line


def open_terminal(columns):
    outer, inner = pty.openpty()
    fcntl.ioctl(inner, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    modes = termios.tcgetattr(inner)
    modes[3] &= ~termios.ECHO
    termios.tcsetattr(inner, termios.TCSANOW, modes)
    return outer, inner


def shown(outer, typed):
    text = b""
    while True:
        try:
            piece = os.read(outer, 65536)
        except OSError:  # the command has closed it
            return text
        if not piece:
            return text
        text += piece
        if typed:
            os.write(outer, typed)
            typed = b""


def main():
    columns, streams, command = int(sys.argv[1]), sys.argv[2].split("+"), sys.argv[3:]
    outer, inner = open_terminal(columns)
    ends = {name: inner if name in streams else subprocess.DEVNULL for name in ("in", "out", "err")}
    typed = sys.stdin.buffer.read() + END_OF_INPUT if "in" in streams else b""
    process = subprocess.Popen(command, stdin=ends["in"], stdout=ends["out"], stderr=ends["err"])
    os.close(inner)
    text = shown(outer, typed)
    sys.stdout.buffer.write(text.replace(b"\r\n", b"\n"))
    return process.wait()


sys.exit(main())
