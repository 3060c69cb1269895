#!/usr/bin/python3
"""Enters a record from outside: in the running program on an X display, through the accessibility bus
alone. Every control is found by its accessible name; what was stored is read back with the sqlite3
command.

usage: on_a_display.sh enter_a_record.py PROGRAM
"""
import os
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
import pyatspi
from gi.repository import Atspi

PATIENCE = 300  # seconds until a window or control that does not come is given up
PERSON = "陆怀谷"
RETURN = 0xFF0D

# A program that is given no processor for a while answers late; by itself the bus waits for less than a second.
Atspi.set_timeout(PATIENCE * 1000, PATIENCE * 1000)


def wait_for(what, look):
    """What `look` gives once it gives something; fails with `what` after a while."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = look()
        except (LookupError, RuntimeError, gi.repository.GLib.GError):
            found = None  # it went while it was looked at
        if found:
            return found
        time.sleep(0.05)
    raise SystemExit(f"not there: {what}")


def everything(node):
    """A node and all below it; nothing for a node that has gone."""
    if node is None:
        return
    yield node
    for child in node:
        yield from everything(child)


class Program:
    def __init__(self, arguments, environment, **pipes):
        self.process = subprocess.Popen(arguments, env=environment, **pipes)

    def application(self):
        desktop = pyatspi.Registry.getDesktop(0)
        for application in desktop:
            if application and application.get_process_id() == self.process.pid:
                return application
        return None

    def find(self, name, *roles):
        """The control of that accessible name that is on show, in any window."""
        def look():
            for node in everything(self.application()):
                if node.name == name and node.getRole() in roles and node.getState().contains(pyatspi.STATE_SHOWING):
                    return node
            return None
        return wait_for(name, look)

    def field(self, name):
        return self.find(name, pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY)

    def press(self, name):
        button = self.find(name, pyatspi.ROLE_PUSH_BUTTON)
        wait_for(f"{name} ready", lambda: button.getState().contains(pyatspi.STATE_SENSITIVE))
        button.queryAction().doAction(0)

    def type(self, name, text):
        field = self.field(name)
        field.queryComponent().grabFocus()
        wait_for(f"focus in {name}", lambda: field.getState().contains(pyatspi.STATE_FOCUSED))
        field.queryEditableText().setTextContents(text)

    def text(self, name):
        return self.field(name).queryText().getText(0, -1)

    def row(self, container, text):
        """The item or cell of that text in a list or table."""
        def look():
            for node in everything(self.find(container, pyatspi.ROLE_LIST, pyatspi.ROLE_TABLE, pyatspi.ROLE_TREE_TABLE)):
                if node.name == text:
                    return node
            return None
        return wait_for(f"{text} in {container}", look)

    def choose(self, container, text):
        """Selects the row, as a screen reader does."""
        row = self.row(container, text)
        table = row.get_parent().queryTable()
        table.addRowSelection(table.getRowAtIndex(row.getIndexInParent()))
        wait_for(f"{text} selected", lambda: self.row(container, text).getState().contains(pyatspi.STATE_SELECTED))


def stored(database, query):
    return subprocess.run(["sqlite3", database, query], check=True, capture_output=True, text=True).stdout


def expect(what, wanted):
    if what != wanted:
        raise SystemExit(f"{what!r} instead of {wanted!r}")


def play(program, database):
    of_person = f"where A00 = (select A00 from A01 where A0101 = '{PERSON}')"
    before = stored(database, f"select count(*) from A03 {of_person}")
    program.choose("人员列表", PERSON)
    program.press("打开(O)")
    expect(program.text("姓名"), PERSON)

    program.choose("信息集", "工作经历")
    pyatspi.Registry.generateKeyboardEvent(RETURN, None, pyatspi.KEY_SYM)
    program.field("起始年月")
    program.press("增加")
    wait_for("an empty page", lambda: program.text("工作单位") == "")
    program.type("起始年月", "2025年01月")
    program.type("工作单位", "青禾县种业中心")
    program.type("职称", "js")
    program.field("行政职务").queryComponent().grabFocus()
    program.choose("代码列表", "技师")
    program.press("确定")
    wait_for("the chosen code", lambda: program.text("职称") == "技师")
    program.press("保存")
    row = f"select A0301,A0302,A0304 from A03 {of_person} and A0302 = '青禾县种业中心'"
    wait_for("the stored row", lambda: stored(database, row))
    expect(stored(database, row), "2025-01-01|青禾县种业中心|264\n")
    expect(stored(database, f"select count(*) from A03 {of_person}"), f"{int(before) + 1}\n")
    program.press("退出")
    wait_for("the people again", lambda: program.find("打开(O)", pyatspi.ROLE_PUSH_BUTTON))


def main():
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    dossier = sys.argv[1]
    with tempfile.TemporaryDirectory() as folder:
        os.environ.update(QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", XDG_DATA_HOME=folder)
        database = os.path.join(folder, "people.db")
        program = None
        try:
            subprocess.run([dossier, "create-sample", database], check=True)
            program = Program([dossier, "--database", database], os.environ)
            play(program, database)
        finally:
            if program:
                program.process.terminate()
                program.process.wait()


if __name__ == "__main__":
    main()
