#!/usr/bin/env python3
"""Holds that a translation is whole and that English speaks of this desktop.

Usage: shipped_english.py TRANSLATIONS_DIR. The English that ships says what a Linux user would say: no Finder, no Mac,
no System Settings, no menu bar icon, no key signs of that other desktop. German must leave nothing out.
"""
import re
import sys
import xml.etree.ElementTree as Xml
from pathlib import Path

FOREIGN = re.compile(r'\bFinder\b|\bMacs?\b|macOS|System Settings|menu bar icon|iCloud|Keychain|Spotlight search|[⌘⌥⌃]')


def messages(path):
    for context in Xml.parse(path).getroot().iter('context'):
        for message in context.iter('message'):
            translation = message.find('translation')
            if translation.get('type') in ('vanished', 'obsolete'):
                continue
            forms = [form.text or '' for form in translation.iter('numerusform')] or [translation.text or '']
            done = translation.get('type') != 'unfinished' and all(forms)
            yield context.findtext('name'), message.findtext('source') or '', message.get('numerus') == 'yes', forms, done


def main():
    folder = Path(sys.argv[1])
    faults = []
    for context, source, plural, forms, done in messages(folder / 'lumenpost_en.ts'):
        if plural and not done:
            faults.append(f'English: {context} "{source}" lacks its plural forms')
        for text in forms if done else [source]:
            if FOREIGN.search(text):
                faults.append(f'English: {context} "{text}" speaks of another desktop')
    for context, source, plural, forms, done in messages(folder / 'lumenpost_de.ts'):
        if not done:
            faults.append(f'German: {context} "{source}" is not translated')
            continue
        for form in forms:
            wanted = set(re.findall(r'%(?:\d|n)', source)) - ({'%n'} if plural else set())
            if not wanted <= set(re.findall(r'%(?:\d|n)', form)):
                faults.append(f'German: {context} "{form}" drops a place of "{source}"')
    print('\n'.join(faults))
    print(f'{len(faults)} faults')
    return 1 if faults else 0


sys.exit(main())
