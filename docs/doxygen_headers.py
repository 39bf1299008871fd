#!/usr/bin/env python3
"""Converts the plain comments of headers to Doxygen comments.

doxygen_headers.py FROM TO     writes each header below the folder FROM, converted, to the folder TO, which is recreated;
                               lists of names are copied unchanged

A block of // before a declaration becomes ///, a // after one becomes ///<, and the block at the head of the file becomes
the description of the file. Indented lines in a block are code. Labels such as "Errors:" become bold. Characters that
have a meaning for Doxygen are escaped.
"""
import re
import shutil
import sys
from pathlib import Path

WHOLE_LINE = re.compile(r"^(\s*)//(?: (.*))?$")
AFTER_CODE = re.compile(r"^(\s*[^\s/].*?[;,{})])\s+// (.*)$")
LABEL = re.compile(r"^(Requires|Returns|Errors|Ownership|Thread safety|Compatibility|Note):")


def escape(text):
    """Escapes the characters of prose that have a meaning for Doxygen, except between backticks."""
    pieces = re.split(r"(`[^`]*`)", text)
    signs = re.compile(r"[\\@<>#%&*~|$\[\]]|(?<!\w)::")
    return "".join(piece if piece.startswith("`") else signs.sub(r"\\\g<0>", piece) for piece in pieces)


def comment(indent, lines):
    """Returns one block of comment lines as documentation."""
    result = []
    in_code = False
    for line, following in zip(lines, [*lines[1:], ""]):
        is_code = line.startswith("  ") or (in_code and not line and following.startswith("  "))
        if is_code != in_code:
            result.append("@code{.cpp}" if is_code else "@endcode")
            in_code = is_code
        result.append(line[2:] if is_code else LABEL.sub(r"**\1:**", escape(line)))
    if in_code:
        result.append("@endcode")
    return [f"{indent}/// {line}".rstrip() for line in result]


def filtered(lines):
    block = []
    indent = ""
    is_head = True
    for line in [*lines, ""]:
        whole = WHOLE_LINE.match(line)
        if whole:
            indent = whole.group(1)
            block.append(whole.group(2) or "")
            continue
        if block and is_head:
            yield from ["/// @file", *comment(indent, block)]
        elif block:
            yield from comment(indent, block)
        is_head = is_head and not line.strip()
        block = []
        trailing = AFTER_CODE.match(line)
        yield f"{trailing.group(1)}  ///< {escape(trailing.group(2))}" if trailing else line


def main():
    source, target = map(Path, sys.argv[1:])
    shutil.rmtree(target, ignore_errors=True)
    target.mkdir(parents=True)
    for names in source.rglob("*.def"):
        shutil.copy(names, target)
    for header in source.rglob("*.h"):
        lines = header.read_text(encoding="utf-8").splitlines()
        (target / header.name).write_text("\n".join(filtered(lines)) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
