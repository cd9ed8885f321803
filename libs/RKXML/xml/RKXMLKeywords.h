#pragma once

#include "RKEnumWordTable.h"
#include "rkxml_export.h"

#include <Qt>

/**
 * Alignment words ("alignleft", "alignvcenter", ...). An unrecognised word
 * means left alignment.
 */
class RKXML_EXPORT RKXMLKeywords
{
public:
    RKXMLKeywords();
    virtual ~RKXMLKeywords() = default;

    Qt::Alignment alignment(const QString& words) const;
    QString alignmentString(Qt::Alignment alignment) const;

private:
    void initAlignments();
    RKEnumWordTable<Qt::Alignment> myAlignments;
};
