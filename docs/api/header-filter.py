#!/usr/bin/env python3
"""Doxygen input filter for the public headers.

Each header opens with a comment that documents its class:

    // ZnAction: a command that the undo history runs, takes back and names.
    //
    //   history.Do(new RenameAction(...));

This filter hands that comment to Doxygen as the class's documentation
(`@class ZnAction`), the indented lines as code, and leaves every other line
as it is, so line numbers in Doxygen's messages stay right. A header whose
opening comment names no class passes through unchanged.
"""
import re
import sys

LEAD = re.compile(r"^// ((?:\w+::)*\w+)(?:<[^>]*>)?: (.*)$")


def escape(text):
    """Doxygen reads \\, < and > in prose as commands and tags."""
    return text.replace("\\", "\\\\").replace("<", "\\<").replace(">", "\\>")


def document(block):
    """The opening comment lines as one Doxygen block of as many lines."""
    name, first = LEAD.match(block[0]).groups()
    out = ["/** @class %s\n * %s" % (name, escape(first[:1].upper() + first[1:]))]
    in_code = False
    for line in block[1:]:
        text = line[2:]
        code = text.startswith("   ")
        if code and not in_code:
            out[-1] += " @code"
        elif in_code and not code:
            out[-1] += " @endcode"
        in_code = code
        out.append(" * " + (text[1:] if code else escape(text.strip())))
    out[-1] += (" @endcode" if in_code else "") + " */"
    return out


def main():
    with open(sys.argv[1], encoding="utf-8") as header:
        lines = header.read().split("\n")
    count = 0
    while count < len(lines) and lines[count].startswith("//"):
        count += 1
    if count and LEAD.match(lines[0]):
        lines[:count] = document(lines[:count])
    sys.stdout.write("\n".join(lines))


main()
