// Calendar word files: every "Language" element of the input becomes calendar words, and
// every look-up is asked for, in and out of range.
#include "FuzzSupport.h"

#include <RKCalendarWords.h>

FUZZ_PLAIN_INITIALIZE

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QDomDocument document;
    if (!fuzz::parse(fuzz::bytes(data, size), &document))
        return 0;
    for (QDomElement language = document.documentElement().firstChildElement(QStringLiteral("Language"));
         !language.isNull(); language = language.nextSiblingElement(QStringLiteral("Language"))) {
        const RKCalendarWords words(language);
        for (int i = -1; i <= 13; ++i) {
            words.shortDayOfWeek(i);
            words.longDayOfWeek(i);
            words.shortMonth(i);
            words.longMonth(i);
        }
        words.shortWeek();
        words.longWeek();
    }
    return 0;
}
