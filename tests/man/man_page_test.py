#!/usr/bin/env python3
"""Holds the manual page docs/mensura.1 to the tool.

Usage: man_page_test.py MENSURA PAGE

Reads the commands from the "commands:" part of `mensura --help` and the
options (every --word) from `mensura --help` and `mensura COMMAND --help`, so
that the check follows the tool as it grows. Fails, naming what is missing,
unless the page has a subsection (.SS) for every command, every option of a
command in that command's subsection, every option of `mensura --help`
somewhere in the page, and the exit statuses of `mensura --help` in its EXIT
STATUS section.
"""
import re
import subprocess
import sys

OPTION = re.compile(r"(?<![\w-])(--[a-z][a-z0-9-]*|-[a-zA-Z])(?![\w-])")
COMMAND_LINE = re.compile(r"^  ([a-z][a-z-]*)\b")


def run_help(tool, *arguments):
    result = subprocess.run([tool, *arguments], capture_output=True, text=True, timeout=30)
    if result.returncode != 0:
        raise SystemExit(
            f"'mensura {' '.join(arguments)}' exited with {result.returncode}:\n{result.stderr}")
    return result.stdout


def commands_of(help_text):
    """The first word of each line of the "commands:" part, up to a blank line."""
    commands = []
    lines = help_text.splitlines()
    if "commands:" not in lines:
        raise SystemExit("'mensura --help' has no \"commands:\" part")
    for line in lines[lines.index("commands:") + 1:]:
        if not line.strip():
            break
        match = COMMAND_LINE.match(line)
        if match:
            commands.append(match.group(1))
    if not commands:
        raise SystemExit("'mensura --help' lists no commands")
    return commands


def options_of(help_text):
    return sorted(set(OPTION.findall(help_text)))


def plain_text(roff):
    """The page's words without roff: macros, font changes and escapes go,
    \\- becomes -. Returns the text and its subsections by command name."""
    sections = {}
    current = None
    words = []
    for line in roff.splitlines():
        if line.startswith('.\\"'):
            continue
        heading = re.match(r"^\.S[SH]\s+(.*)$", line)
        if heading:
            title = heading.group(1).strip('"').split()
            if line.startswith(".SS") and title:
                name = title[1] if title[0] == "mensura" and len(title) > 1 else title[0]
                current = name
                sections.setdefault(current, [])
            else:
                current = None
            continue
        text = re.sub(r"^\.[A-Za-z]+\s*", "", line)
        text = text.replace("\\-", "-").replace("\\e", "\\").replace("\\&", "")
        text = re.sub(r"\\f(\[[^\]]*\]|\(..|.)", "", text)
        text = re.sub(r"\\(\[[^\]]*\]|\(..)", " ", text)
        # Alternating-font macros write their arguments without blanks.
        text = text.replace('"', " ")
        words.append(text)
        if current is not None:
            sections[current].append(text)
    return "\n".join(words), {name: "\n".join(lines) for name, lines in sections.items()}


def exit_statuses_of_help(help_text):
    """The statuses of the "exit status:" part: lines "  N  meaning"."""
    part = help_text.split("\nexit status:\n", 1)
    if len(part) != 2:
        raise SystemExit("'mensura --help' has no \"exit status:\" part")
    return re.findall(r"^  ([0-9]+)  ", part[1].split("\n\n", 1)[0], re.M)


def exit_statuses_of_page(roff):
    """The statuses that the page's EXIT STATUS section lists, one .TP each."""
    section = re.search(r"^\.SH EXIT STATUS\n(.*?)(?=^\.SH )", roff, re.M | re.S)
    return re.findall(r"^\.TP\n\.B ([0-9]+)$", section.group(1), re.M) if section else []


def has_option(text, option):
    return re.search(r"(?<![\w-])" + re.escape(option) + r"(?![\w-])", text) is not None


def main():
    if len(sys.argv) != 3:
        raise SystemExit(__doc__)
    tool, page = sys.argv[1], sys.argv[2]
    with open(page, encoding="utf-8") as file:
        roff = file.read()
    text, sections = plain_text(roff)

    tool_help = run_help(tool, "--help")
    commands = commands_of(tool_help)
    missing = []
    for option in options_of(tool_help):
        if not has_option(text, option):
            missing.append(f"{option} (mensura --help)")
    statuses = exit_statuses_of_help(tool_help)
    if exit_statuses_of_page(roff) != statuses:
        missing.append(f"the exit statuses {', '.join(statuses)} in EXIT STATUS, as "
                       f"'mensura --help' has them")
    checked = 0
    for command in commands:
        if command not in sections:
            missing.append(f"a subsection .SS {command}")
            continue
        if not re.search(r"\bmensura\s+" + re.escape(command) + r"\b", sections[command]):
            missing.append(f"'mensura {command}' in the subsection {command}")
        # help is the command that shows the others' help; it has none itself.
        if command == "help":
            continue
        for option in options_of(run_help(tool, command, "--help")):
            checked += 1
            if not has_option(sections[command], option):
                missing.append(f"{option} in the subsection {command} (mensura {command} --help)")
    if missing:
        print(f"{page} lacks what the tool's help prints:")
        for item in missing:
            print(f"  {item}")
        return 1
    print(f"{page}: {len(commands)} commands and {checked} command options, all in the page")
    return 0


if __name__ == "__main__":
    sys.exit(main())
