#!/usr/bin/env python3
"""Follows the links from page to page of a folder: links.py FOLDER. Prints those that lead nowhere, and each
of the files named behind the folder that is not there, and exits with 1."""
import pathlib
import re
import sys

folder = pathlib.Path(sys.argv[1])
pages = sorted(folder.rglob("*.md"))
lost = [name for name in sys.argv[2:] if not (folder / name).exists()]
for page in pages:
    text = re.sub(r"```.*?```|`[^`]*`", "", page.read_text(encoding="utf-8"), flags=re.DOTALL)
    for link in re.findall(r"\]\(([^)\s#]+)", text):
        if "://" not in link and not (page.parent / link).exists():
            lost.append(f"{page.relative_to(folder)}: {link}")
for name in lost:
    print(f"links: {name} leads nowhere", file=sys.stderr)
sys.exit(1 if lost or not pages else 0)
