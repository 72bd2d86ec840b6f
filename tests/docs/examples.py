#!/usr/bin/env python3
"""The code examples of docs/*.md, compiled and run so that they stay true.

Every fenced block of a page names its language, and the language says what
the tests do with it:

  cpp, c    a whole program: built against the library and run; the block
            right after it, marked output, is what it must print, exactly
            (no output block: it must print nothing)
  output    what the program before it prints
  python    a doctest session (>>> lines and their results), run against the
            library; the sessions of one page share their names, in order
  console   a shell session: "$ " and a command, then what it prints
            (standard output and standard error); the commands of a block run
            one after another in one shell, with the mensura tool first on
            the path, so that "echo $?" shows the status of the one before
  text, cmake
            not run: diagrams, tables, build files, commands for a machine
            of your own

A block of any other language, sh and bash included, or with none, is an error:
every example is run or says why it is not.

  examples.py extract DOCS OUT     writes OUT/<page>-<n>.cpp|.c and .expected
                                   for each program, and OUT/examples.cmake,
                                   which lists them for CMake
  examples.py run EXPECTED PROGRAM runs PROGRAM, compares its output
  examples.py python DOCS          runs the Python sessions
  examples.py console DOCS TOOLDIR runs the shell sessions
"""

import doctest
import os
import re
import subprocess
import sys
import tempfile

RUN = {"cpp", "c", "python", "console"}
NOT_RUN = {"text", "cmake"}
FENCE = re.compile(r"^( {0,3})(```+)\s*([^`\s]*)\s*$")


class Block:
    def __init__(self, page, line, language, text):
        self.page = page
        self.line = line
        self.language = language
        self.text = text

    def where(self):
        return "%s:%d" % (self.page, self.line)


def blocks(path):
    """The fenced blocks of a Markdown page, in order."""
    out = []
    with open(path, encoding="utf-8") as page:
        lines = page.read().split("\n")
    name = os.path.basename(path)
    i = 0
    while i < len(lines):
        opened = FENCE.match(lines[i])
        if not opened:
            i += 1
            continue
        indent, fence, language = opened.group(1), opened.group(2), opened.group(3)
        body = []
        j = i + 1
        while j < len(lines) and not (lines[j].strip() == fence and
                                      lines[j].startswith(indent)):
            body.append(lines[j][len(indent):] if lines[j].startswith(indent) else lines[j])
            j += 1
        if j == len(lines):
            raise SystemExit("%s:%d: a fenced block is not closed" % (name, i + 1))
        out.append(Block(name, i + 1, language, "\n".join(body) + "\n"))
        i = j + 1
    return out


def pages(docs):
    return sorted(os.path.join(docs, f) for f in os.listdir(docs) if f.endswith(".md"))


def all_blocks(docs):
    found = []
    for path in pages(docs):
        found.extend(blocks(path))
    for block in found:
        if block.language not in RUN | {"output"} | NOT_RUN:
            raise SystemExit(
                "%s: a block marked '%s': mark an example cpp, c, python or console (with $ "
                "prompts) so that it is run, or text or cmake if it is not one" %
                (block.where(), block.language))
    return found


def extract(docs, out):
    os.makedirs(out, exist_ok=True)
    found = all_blocks(docs)
    listed = []
    count = {}
    for k, block in enumerate(found):
        if block.language == "output":
            if k == 0 or found[k - 1].language not in ("cpp", "c"):
                raise SystemExit("%s: an output block follows no program" % block.where())
            continue
        if block.language not in ("cpp", "c"):
            continue
        if not re.search(r"\bint main\s*\(", block.text):
            raise SystemExit("%s: a %s example is a whole program, with main" %
                             (block.where(), block.language))
        stem = block.page[:-3]
        count[stem] = count.get(stem, 0) + 1
        name = "%s-%d" % (stem, count[stem])
        expected = ""
        if k + 1 < len(found) and found[k + 1].language == "output":
            expected = found[k + 1].text
        source = os.path.join(out, name + "." + block.language)
        # The line of the page, so that a compiler's message points into it.
        text = '#line %d "docs/%s"\n%s' % (block.line + 1, block.page, block.text)
        for path, content in ((source, text), (os.path.join(out, name + ".expected"), expected)):
            old = None
            if os.path.exists(path):
                with open(path, encoding="utf-8") as f:
                    old = f.read()
            if old != content:  # unchanged files keep their time: no rebuild
                with open(path, "w", encoding="utf-8") as f:
                    f.write(content)
        listed.append("mensura_doc_example(%s %s %s)" % (name, block.language, block.where()))
    with open(os.path.join(out, "examples.cmake"), "w", encoding="utf-8") as f:
        f.write("# Written by tests/docs/examples.py extract: the programs of docs/*.md.\n")
        f.write("\n".join(listed) + "\n")


def run(expected_path, program):
    with open(expected_path, encoding="utf-8") as f:
        expected = f.read()
    result = subprocess.run([program], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                            timeout=60)
    actual = result.stdout.decode("utf-8", "replace")
    if result.returncode != 0 or actual != expected:
        sys.stdout.write("the program exits with %d and prints:\n%s%s\nthe page claims:\n%s" %
                         (result.returncode, actual, result.stderr.decode("utf-8", "replace"),
                          expected))
        return 1
    return 0


def python(docs):
    failures = 0
    tried = 0
    parser = doctest.DocTestParser()
    for path in pages(docs):
        sessions = [b for b in blocks(path) if b.language == "python"]
        if not sessions:
            continue
        globs = {}
        for block in sessions:
            if not block.text.lstrip().startswith(">>>"):
                print("%s: a python block is a doctest session, >>> first" % block.where())
                failures += 1
                continue
            test = parser.get_doctest(block.text, globs, block.where(), block.page, block.line)
            runner = doctest.DocTestRunner(optionflags=doctest.ELLIPSIS)
            result = runner.run(test, clear_globs=False)
            failures += result.failed
            tried += result.attempted
    print("%d Python examples, %d failed" % (tried, failures))
    return 1 if failures or not tried else 0


def console(docs, tool_dir):
    failures = 0
    tried = 0
    env = dict(os.environ)
    env["PATH"] = os.path.abspath(tool_dir) + os.pathsep + env.get("PATH", "")
    env["LC_ALL"] = "C.UTF-8"
    for path in pages(docs):
        for block in blocks(path):
            if block.language != "console":
                continue
            commands, outputs = [], []
            for line in block.text.rstrip("\n").split("\n"):
                if line.startswith("$ "):
                    commands.append(line[2:])
                    outputs.append([])
                elif commands:
                    outputs[-1].append(line)
                else:
                    print("%s: a console block begins with a $ command" % block.where())
                    failures += 1
                    break
            else:
                mark = "@@mensura-docs-%d@@"
                script = ["__status=0"]
                for n, command in enumerate(commands):
                    script.append("printf '%s\\n'; (exit $__status); %s 2>&1; __status=$?" %
                                  (mark % n, command))
                with tempfile.TemporaryDirectory() as folder:
                    result = subprocess.run(["sh", "-c", "\n".join(script)], cwd=folder, env=env,
                                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                            timeout=120)
                text = result.stdout.decode("utf-8", "replace")
                for n, command in enumerate(commands):
                    tried += 1
                    start = text.find(mark % n + "\n")
                    end = text.find(mark % (n + 1) + "\n") if n + 1 < len(commands) else len(text)
                    actual = text[start + len(mark % n) + 1:end] if start >= 0 else "(not run)"
                    claimed = "".join(l + "\n" for l in outputs[n])
                    if actual != claimed:
                        failures += 1
                        print("%s: $ %s\nprints:\n%sthe page claims:\n%s" %
                              (block.where(), command, actual, claimed))
    print("%d commands, %d failed" % (tried, failures))
    return 1 if failures or not tried else 0


def main(argv):
    if len(argv) == 4 and argv[1] == "extract":
        extract(argv[2], argv[3])
        return 0
    if len(argv) == 4 and argv[1] == "run":
        return run(argv[2], argv[3])
    if len(argv) == 3 and argv[1] == "python":
        return python(argv[2])
    if len(argv) == 4 and argv[1] == "console":
        return console(argv[2], argv[3])
    sys.stderr.write(__doc__)
    return 2


if __name__ == "__main__":
    sys.exit(main(sys.argv))
