#!/usr/bin/env python3
"""Embeds the style sheet and the scripts of the HTML page in a C++ source.

    embed.py [--three FILE --notice FILE] OUTPUT STYLE SCRIPT...

Writes the members of PageAssets. The scripts are joined in the given order inside one function, so that they share a scope
and define no global names. The hashes are those of the page's Content-Security-Policy. The output depends on the content of
the files only.
"""
import argparse
import base64
import gzip
import hashlib
import pathlib

LINE = 16000  # bytes of one string literal


def read(path):
    text = pathlib.Path(path).read_bytes()
    if b"\r" in text:
        raise SystemExit(f"embed.py: {path} has a carriage return, which browsers change before they compute the hash")
    return text


def without_comments(text):
    """Removes indentation and the lines that are comments only; strings of several lines are not allowed in scripts."""
    lines = (line.strip() for line in text.split(b"\n"))
    return b"\n".join(line for line in lines if line and not line.startswith(b"//")) + b"\n"


def ascii_only(text, escape):
    """Escapes the other characters, which are in strings only, so that a page is the same in every encoding."""
    return "".join(c if ord(c) < 128 else escape(c) for c in text.decode("utf-8")).encode("ascii")


def script_escape(character):
    units = character.encode("utf-16-be")
    return "".join(f"\\u{units[i]:02x}{units[i + 1]:02x}" for i in range(0, len(units), 2))


def style_escape(character):
    return f"\\{ord(character):x} "


def hash_of(text):
    return b"sha256-" + base64.b64encode(hashlib.sha256(text).digest()) if text else b""


def literal(text):
    escapes = {ord("\n"): "\\n", ord('"'): '\\"', ord("\\"): "\\\\", ord("?"): "\\?"}
    pieces = []
    for begin in range(0, len(text), LINE):
        piece = text[begin:begin + LINE]
        pieces.append('"' + "".join(escapes.get(c) or (chr(c) if 32 <= c < 127 else f"\\{c:03o}") for c in piece) + '"')
    return "\n    ".join(pieces) or '""'


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--three")
    parser.add_argument("--notice")
    parser.add_argument("output")
    parser.add_argument("style", help="one or more files, separated by commas")
    parser.add_argument("scripts", nargs="+")
    arguments = parser.parse_args()

    style = without_comments(b"".join(read(path) for path in arguments.style.split(",")))
    script = b'(() => {\n"use strict";\n' + b"".join(without_comments(read(path)) for path in arguments.scripts) + b"})();\n"
    style = ascii_only(style, style_escape)
    script = ascii_only(script, script_escape)
    for name, text in (("style", style), ("script", script)):
        if b"</" + name.encode() in text.lower() or b"<!--" in text:
            raise SystemExit(f"embed.py: the {name} would end its element")
    three = pathlib.Path(arguments.three).read_bytes() if arguments.three else b""
    packed = base64.b64encode(gzip.compress(three, 9, mtime=0)) if three else b""
    notice = read(arguments.notice) if arguments.three else b""
    if b"--" in notice:
        raise SystemExit("embed.py: the notice would end its comment")
    members = (("kStyle", style), ("kStyleHash", hash_of(style)), ("kScript", script), ("kScriptHash", hash_of(script)),
               ("kThree", packed), ("kThreeHash", hash_of(three)), ("kThreeNotice", notice))
    source = "// Written by embed.py.\n#include \"PageAssets.h\"\n\n"
    source += "".join(f"std::string_view const PageAssets::{name} =\n    {literal(text)};\n" for name, text in members)
    pathlib.Path(arguments.output).write_text(source, encoding="ascii")


main()
