#!/usr/bin/python3
"""A failure at the start, seen from outside: the box says what standard error says, and behind it the
program exits with 1.

usage: on_a_display.sh fail_at_the_start.py PROGRAM
"""
import os
import subprocess
import sys
import tempfile

import pyatspi

from enter_a_record import PATIENCE, Program, expect


def main():
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    with tempfile.TemporaryDirectory() as folder:
        os.environ.update(QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", XDG_DATA_HOME=folder)
        missing = os.path.join(folder, "none.db")
        told = f"无法打开数据库 {missing}（数据库文件不存在：{missing}），请检查路径，或用 dossier create-empty 建立没有人员的数据库。"
        program = Program([sys.argv[1], "--database", missing], os.environ, stderr=subprocess.PIPE)
        try:
            program.find(told, pyatspi.ROLE_LABEL)
            program.press("确定")
            _, error = program.process.communicate(timeout=PATIENCE)
            expect(error.decode(), f"dossier: {told}\n")
            expect(program.process.returncode, 1)
        finally:
            program.process.kill()


main()
