#pragma once

#include "private/RKFileStamp.h"

#include <RKLocale.h>

#include <QDate>
#include <QDomElement>
#include <QHash>
#include <QSharedPointer>
#include <QString>
#include <QVector>

#include <mutex>

/// One "vacation" element: its raw texts and the dates read from them (invalid when malformed).
struct RKVacationEntry {
    QString startText;
    QString endText;
    QString name;
    QDate start;
    QDate end;

    /// Every "vacation" child of `parent`, in order.
    static QVector<RKVacationEntry> readAll(const QDomElement& parent);
};

/**
 * The school vacations of each locale's holiday file in parsed form, parsed again
 * when the file changes on disk. One mutex guards the table; parsed files are
 * handed out as shared, never-changed snapshots, so any thread may query.
 */
class RKVacationFileCache
{
public:
    struct Province {
        QString name;
        QVector<RKVacationEntry> vacations;
    };
    struct Country {
        QVector<RKVacationEntry> nationwide;
        QVector<Province> provinces;
    };
    struct File {
        RKFileStamp stamp;
        QVector<Country> countries;
    };

    /// The locale's vacations; an empty file when it has no holiday file. Costs one stat() when cached.
    QSharedPointer<const File> file(const RKLocale& locale) const;
    /// Keeps the vacations of a document already read, so the first query need not parse it again.
    void seed(const RKLocale& locale, const RKFileStamp& stamp, const QDomElement& root);
    void clear();

private:
    static QSharedPointer<const File> parse(const QDomElement& root, const RKFileStamp& stamp);

    mutable std::mutex myMutex;
    mutable QHash<QString, QSharedPointer<const File>> myFiles;
};
