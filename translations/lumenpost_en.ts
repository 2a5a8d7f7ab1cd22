<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>BaseTexts</name>
    <message>
        <source>there is a folder of that name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is no regular file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is no regular file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it could not be encoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>your share of the disk is used up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file would be larger than is allowed here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the disk can&apos;t be written to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>permission denied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no such folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the name is too long</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>too many files are open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the disk reports an error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t write %1: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t read %1: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program is using %1.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PlatformTexts</name>
    <message>
        <source>“%1” could not be moved to the Trash.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no file “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ScrollHUDView</name>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ScrollingCaptureSession</name>
    <message>
        <source>Auto-scrolling…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll the area slowly</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
