#pragma once

#include "rkxml_export.h"

#include <QDomElement>
#include <QHash>
#include <QString>
#include <QStringList>

/**
 * Which CSS sheets an image uses, by title: titles mapped to sheet ids, the
 * default title, a custom sheet and the template's untitled standard sheet.
 *
 * The XML form reads the custom sheet from "CustomCssSheetTitle" but writes it
 * as "CustomCssSheet", so a map written and read back has no custom sheet.
 * Existing project files depend on both names; do not unify them.
 *
 * Where a title has to be picked from the entries without a stored default,
 * the smallest title (QString ordering) is taken, so results do not depend on
 * hash order. A value type; not thread-safe for concurrent writes.
 */
class RKXML_EXPORT RKCssSheetTitleIdMap
{
public:
    RKCssSheetTitleIdMap() = default;
    /// Reads the first child "cssSheetTitleIdMap" of `parent`; logs and stays empty without one.
    explicit RKCssSheetTitleIdMap(const QDomElement& parent);
    virtual ~RKCssSheetTitleIdMap() = default;

    bool operator==(const RKCssSheetTitleIdMap& other) const;
    bool operator!=(const RKCssSheetTitleIdMap& other) const { return !(*this == other); }

    /// Appends "cssSheetTitleIdMap" to `parent` (entries in title order) and returns it.
    QDomElement buildXML(QDomElement& parent) const;

    void insert(const QString& title, const QString& id);
    bool contains(const QString& title) const;
    QString value(const QString& title, const QString& defaultValue = QString()) const;
    /// The smallest title mapped to `id`; empty when none.
    QString key(const QString& id) const;
    /// Titles in ascending order.
    QStringList keys() const;
    /// Ids in the order of keys().
    QStringList values() const;
    /// No entries (the other fields are not looked at).
    bool isEmpty() const;

    void setDefaultCssSheetTitle(const QString& title);
    /// Empty for an empty map; else the stored default title, else the smallest title.
    QString defaultCssSheetTitle() const;
    bool hasExplicitDefaultCssSheet() const;
    /// The id of defaultCssSheetTitle(); the title followed by ".css" when it has none.
    QString defaultCssSheet() const;
    /// defaultCssSheet(), or when that is empty the first non-empty id in title order.
    QString findDefaultCssSheet() const;
    /// Makes the title of `id` (or of `id` without its last four characters) the default.
    void setDefaultCssSheet(const QString& id);

    void setCustomCssSheet(const QString& id);
    QString customCssSheet() const;
    void setStandardSheet(const QString& id);
    QString standardSheet() const;

    /// Adds (or overwrites) the entries of `other`; the other fields stay as they are.
    void merge(const RKCssSheetTitleIdMap& other);
    /// The id of the first of `names` that is a title; failing that, of the first that equals
    /// a title ignoring case (smallest such title). Empty when none matches.
    QString findStyleByName(const QStringList& names) const;
    /// "title[ (default)] <=> id", one line per entry in title order.
    QStringList toDebugStringList() const;

private:
    QHash<QString, QString> myEntries;
    QString myDefaultCssSheetTitle;
    QString myCustomCssSheet;
    QString myStandardSheet;
};
