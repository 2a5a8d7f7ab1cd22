#!/usr/bin/env python3
"""Finds words that a person sees and no translator does.

Usage: untranslated.py SOURCE_DIR. Prints FILE:LINE: TEXT for each and exits with 1 when there are any. What it looks
for: a literal that reads like a sentence or a title ("Two words", "Saved.", "Open…") outside tr() and
QT_TRANSLATE_NOOP. Not meant for a person: the log, what is written into files or sent to services, and lines that say
so themselves with "// untranslated: why".
"""
import re
import sys
from pathlib import Path

TRANSLATED = re.compile(r'(^|::)(tr|translate|QT_TRANSLATE_NOOP|QT_TRANSLATE_N_NOOP)$')
UNSEEN = re.compile(r'(^|::)(info|error|warning|debug|qWarning|qInfo|qDebug|qFatal|static_assert|Q_ASSERT_X|Q_CLASSINFO|setObjectName|'
                    r'setProperty|environmentVariable|qgetenv)$')
SENTENCE = re.compile(r"^[A-Z“][\w’'“”\-]*(…|[.!?]$| +[\w“”&(%].*)")
RAW = re.compile(r'R"(\w*)\(.*?\)\1"', re.S)  # style sheets, prompts
EXCLUDED = re.compile(r'^\s*(//|#include|\*)')


def words(literal):
    return ''.join(re.findall(r'u?"((?:[^"\\\n]|\\.)*)"', literal)).replace('\\"', '"')


def enclosing_calls(source, position):
    """Names of the calls that are open at a place, innermost first, as far back as the statement goes."""
    depth, names, i = 0, [], position - 1
    while i > 0 and position - i < 2000:
        c = source[i]
        if c == ')':
            depth += 1
        elif c == '(':
            if depth == 0:
                name = re.search(r'([\w:]+)\s*$', source[max(0, i - 80):i])
                names.append(name.group(1) if name else '')
            else:
                depth -= 1
        elif c in ';{}' and depth == 0:
            break
        i -= 1
    return names


def strays(path):
    source = RAW.sub(lambda raw: '\n' * raw.group(0).count('\n'), path.read_text(encoding='utf-8'))
    lines = source.split('\n')
    for match in re.finditer(r'(?:u?"(?:[^"\\\n]|\\.)*"\s*)+', source):
        text = words(match.group(0))
        if not SENTENCE.search(text):
            continue
        number = source.count('\n', 0, match.start()) + 1
        line = lines[number - 1]
        before = lines[number - 2] if number > 1 else ''
        if EXCLUDED.search(line) or 'untranslated:' in line or 'untranslated:' in before:
            continue
        calls = enclosing_calls(source, match.start())
        if any(TRANSLATED.search(call) for call in calls) or any(UNSEEN.search(call) for call in calls):
            continue
        yield number, text


def main():
    found = 0
    root = Path(sys.argv[1])
    for path in sorted(root.rglob('*')):
        if path.suffix in ('.cpp', '.h'):
            for number, text in strays(path):
                print(f'{path.relative_to(root)}:{number}: {text}')
                found += 1
    print(f'{found} texts outside tr()')
    return 1 if found else 0


sys.exit(main())
