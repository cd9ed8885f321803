#pragma once

#include "RKSingleton.h"
#include "rkcore_export.h"

#include <QLocale>
#include <QMutex>

/// The locale the application speaks; QLocale() (the system's) until set.
class RKCORE_EXPORT RKApplicationLocale : public RKSingleton<RKApplicationLocale>
{
    friend class RKSingleton<RKApplicationLocale>;

public:
    QLocale locale() const;
    void setLocale(const QLocale& locale);
    /// ISO 639 code of the language, e.g. "de"; "en" for the C locale.
    QString languageToCode() const;

private:
    RKApplicationLocale() = default;
    mutable QMutex myMutex;
    QLocale myLocale;
};
