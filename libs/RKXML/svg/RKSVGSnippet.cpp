#include "RKSVGSnippet.h"

RKSVGSnippet::RKSVGSnippet(const QString& content, const QString& ID, const QRectF& boundingBox, const QTransform& matrix)
    : myContent(content)
    , myID(ID)
    , myBoundingBox(boundingBox)
    , myMatrix(matrix)
{
}

bool RKSVGSnippet::operator==(const RKSVGSnippet& other) const
{
    return myContent == other.myContent && myID == other.myID && myBoundingBox == other.myBoundingBox
        && myMatrix == other.myMatrix;
}
