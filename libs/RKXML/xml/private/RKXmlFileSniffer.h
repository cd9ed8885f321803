#pragma once

class QFile;

/**
 * The cheap check against truncated or empty files: the first tag name in the first 100
 * bytes must be closed ("/name") in the last 50, or those must hold "/>". Not a parse.
 * Opens and closes the file itself; a sequential device is read at most 64 MiB far.
 */
class RKXmlFileSniffer
{
public:
    static bool isProbablyXML(QFile* file);
};
