#!/usr/bin/python3
"""The example hosts from outside: each opens a visit, which is left by 退出, and tells what came of it.

usage: on_a_display.sh leave_the_examples.py DATABASE CONSOLE [QT_WIDGETS]
"""
import os
import subprocess
import sys
import tempfile

import pyatspi

from enter_a_record import PATIENCE, Program, expect, stored


def told_by(program):
    said, error = program.process.communicate(timeout=PATIENCE)
    expect(error.decode(), "")
    expect(program.process.returncode, 0)
    return said.decode()


def main():
    if len(sys.argv) not in (3, 4):
        raise SystemExit(__doc__)
    database, console, *qt_widgets = sys.argv[1:]
    person = stored(database, "select A00 from A01 order by A0199 limit 1").strip()
    with tempfile.TemporaryDirectory() as folder:
        os.environ.update(QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", XDG_RUNTIME_DIR=folder)
        programs = []
        try:
            programs.append(Program([console, database, person], os.environ, stdout=subprocess.PIPE, stderr=subprocess.PIPE))
            programs[-1].press("退出")
            expect(told_by(programs[-1]), "nothing saved\n")

            # The host's style and palette are its own, and its program goes on.
            if not qt_widgets:
                return
            programs.append(Program([*qt_widgets, database], os.environ, stdout=subprocess.PIPE, stderr=subprocess.PIPE))
            for _ in range(2):
                programs[-1].press("Open")
                programs[-1].press("退出")
            programs[-1].press("Quit")
            expect(told_by(programs[-1]), "nothing saved, style windows, window #dde8d8\n" * 2)
        finally:
            for program in programs:
                program.process.kill()


main()
