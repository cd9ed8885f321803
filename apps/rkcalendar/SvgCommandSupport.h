#pragma once

#include "Command.h"

#include <QDomDocument>
#include <QString>

/**
 * Reads an SVG file for a command. On failure the message is written through
 * `context` and `*exitCode` set: 1 when the file cannot be read, 2 when it is not
 * XML or its root element is not "svg". Returns a null document then.
 */
QDomDocument readSvgFile(CommandContext& context, const QString& path, int* exitCode);

/// Makes `path` a directory (created when missing); false (message written) when it cannot be.
bool ensureDirectory(CommandContext& context, const QString& path);
