#pragma once

#include <QString>

/**
 * Replaces the characters that XML 1.0 cannot hold (C0 controls other than tab, line feed
 * and carriage return; U+FFFE, U+FFFF; unpaired surrogates) by U+FFFD, so that a writer
 * can write the rest of a document whole and it reads back. One filter serves one
 * document: it remembers whether it replaced anything, and warns once for the document.
 * Not thread-safe; cheap when nothing needs replacing (the text is shared, not copied).
 */
class RKXmlCharacterFilter
{
public:
    RKXmlCharacterFilter() = default;
    ~RKXmlCharacterFilter();
    RKXmlCharacterFilter(const RKXmlCharacterFilter&) = delete;
    RKXmlCharacterFilter& operator=(const RKXmlCharacterFilter&) = delete;

    /// `text` with every character XML cannot hold replaced by U+FFFD.
    QString operator()(const QString& text);
    bool replacedAny() const { return myReplaced; }

    /// True when every character of `text` may appear in an XML 1.0 document.
    static bool isClean(const QString& text);

private:
    bool myReplaced = false;
};
