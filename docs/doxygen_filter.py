#!/usr/bin/env python3
"""Doxygen's input filter for the public headers: their plain comments as
documentation.

The headers are written with plain comments, // in C++ and /* */ in C, as
the rest of the sources are. Doxygen documents only its own kinds of comment,
so this filter rewrites them, keeping every line where it is:

  - the comment that opens the file: the file's documentation (@file);
  - a comment on lines of its own: the documentation of what follows it
    (// becomes ///, /* becomes /**);
  - a comment behind code: the documentation of that code (///<, /**<);
  - a comment that documents nothing stays plain: section rulers
    ("/* Names ---- */"), comments behind a closing brace, a preprocessor
    line or an access specifier, and comments inside a function's body.

  doxygen_filter.py FILE     writes the rewritten FILE to standard output
"""

import re
import sys

RULER = re.compile(r"^\s*/\*.*-{4,}\s*\*/\s*$")
# Code behind which a comment documents nothing.
PLAIN_AFTER = re.compile(r"^\s*(}|#|public:|private:|protected:|extern \"C\" \{)")
# The start of a function's body on a line: ") {", ") const {", ") : m(v) {".
BODY = re.compile(r"\)\s*(const\s*)?(noexcept\s*)?(:[^;{]*)?\{")


def comment_start(line):
    """Where a comment begins in line, or -1; strings and characters are code."""
    quote = None
    i = 0
    while i < len(line):
        c = line[i]
        if quote:
            if c == "\\":
                i += 1
            elif c == quote:
                quote = None
        elif c in "\"'":
            quote = c
        elif line.startswith("//", i) or line.startswith("/*", i):
            return i
        i += 1
    return -1


def head_length(lines):
    """How many lines the comment that opens the file takes."""
    if not lines or not lines[0].lstrip().startswith(("//", "/*")):
        return 0
    if lines[0].lstrip().startswith("/*"):
        for n, line in enumerate(lines):
            if "*/" in line:
                return n + 1
        return len(lines)
    n = 0
    while n < len(lines) and lines[n].lstrip().startswith("//"):
        n += 1
    return n


def rewrite(lines):
    out = []
    head = head_length(lines)
    for n in range(head):
        line = lines[n]
        if line.lstrip().startswith("//"):
            line = line.replace("//", "///", 1)
        elif n == 0:
            line = line.replace("/*", "/**", 1)
        if n == head - 1:
            # @file ends the block: what it takes as a name is the rest of its line.
            if "*/" in line:
                line = line.replace("*/", "@file */", 1)
            else:
                line += " @file"
        out.append(line)

    in_comment = False  # inside a /* */ comment begun on an earlier line
    depth = 0  # braces of function bodies, inside which comments stay plain
    for line in lines[head:]:
        if in_comment:
            out.append(line)
            in_comment = "*/" not in line
            continue
        at = comment_start(line)
        code = line if at < 0 else line[:at]
        comment = "" if at < 0 else line[at:]
        block = comment.startswith("/*")
        if at >= 0:
            in_comment = block and "*/" not in comment[2:]
        if at < 0 or depth > 0 or PLAIN_AFTER.match(code) or RULER.match(line):
            out.append(line)
        elif not code.strip():
            out.append(code + ("/**" if block else "///") + comment[2:])
        else:
            out.append(code + ("/**<" if block else "///<") + comment[2:])
        if depth > 0 or BODY.search(code):
            for c in code:
                if c == "{":
                    depth += 1
                elif c == "}":
                    depth -= 1
    return out


def main():
    with open(sys.argv[1], encoding="utf-8") as source:
        lines = source.read().split("\n")
    sys.stdout.write("\n".join(rewrite(lines)))


if __name__ == "__main__":
    main()
