<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Translations</name>
    <message>
        <source>Hello &amp; &lt;world&gt;</source>
        <translation>Hallo</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation></translation>
    </message>
</context>
</TS>
