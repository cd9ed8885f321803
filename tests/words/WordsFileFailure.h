#pragma once

// Shared checks of the executables that start the calendar words registry over a
// broken resource file. Each such executable is its own process because the
// registry reads its files once, when the singleton is created.

#include "RKTestSupport.h"

#include <RKCalendarDayNames.h>
#include <RKCalendarWordsRegistry.h>

namespace WordsFileFailure {

inline int& warningCount()
{
    static int count = 0;
    return count;
}

inline QtMessageHandler& forwardTo()
{
    static QtMessageHandler handler = nullptr;
    return handler;
}

// Counts warnings and hands every message on to QtTest, so ignoreMessage still applies.
inline void countingHandler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg)
        ++warningCount();
    if (forwardTo())
        forwardTo()(type, context, message);
}

/// Points the resource look-up at `dataDir` alone (no search path), before any singleton exists.
inline void useOnlyDataDirectory(const QString& dataDir)
{
    isolateUserFiles();
    qputenv("RKXML_RESOURCE_PATH", QByteArray());
    qputenv("RKXML_DATA_DIR", dataDir.toLocal8Bit());
}

/// Creates the registry and returns how many warnings that printed.
inline int createRegistryCountingWarnings()
{
    warningCount() = 0;
    forwardTo() = qInstallMessageHandler(countingHandler);
    RKSingleton<RKCalendarWordsRegistry>::instance();
    qInstallMessageHandler(forwardTo());
    return warningCount();
}

/// Every look-up of a registry without words shows the placeholders; snapshots too.
inline void verifyNoWords()
{
    const RKCalendarWordsRegistry& registry = RKSingleton<RKCalendarWordsRegistry>::instance();
    const RKLocale de(QStringLiteral("de"), QStringLiteral("DE"));
    QVERIFY(!registry.words(de).isValid());
    QVERIFY(!registry.words(de).language().isValid());
    QCOMPARE(registry.monthNameLong(de, 1), QStringLiteral("unknown"));
    QCOMPARE(registry.monthNameShort(de, 1), QStringLiteral("nn"));
    QCOMPARE(registry.dayNameLong(de, 1), QStringLiteral("unknown"));
    QCOMPARE(registry.dayNameShort(de, 7), QStringLiteral("nn"));
    QCOMPARE(registry.weekLong(de), QStringLiteral("unknown"));
    QCOMPARE(registry.monthNamesLong(de, {2, 1}), QStringLiteral("unknown, unknown"));
    QCOMPARE(registry.createMonthMap().size(), 12);
    const RKCalendarDayNames names(de);
    QCOMPARE(names.dayOfWeekShort(1), QStringLiteral("nn"));
    QCOMPARE(names.monthLong(12), QStringLiteral("unknown"));
}

}
