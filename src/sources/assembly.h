#pragma once
// Assembling a .logarchive bundle from a live log store (a folder holding "uuidtext" and
// "diagnostics" side by side):
//   D/            <- the contents of S/uuidtext
//   D/Persist     <- S/diagnostics/Persist
//   D/Special     <- S/diagnostics/Special
//   D/timesync    <- S/diagnostics/timesync
//   D/Extra/NAME  <- every file (not folder) of S/diagnostics
//   D/Info.plist  <- written by makeInfoFile
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace tarnbeck {

QString sourceLine(const QString& source);       // "Source: S\n"
QString destinationLine(const QString& dest);    // "Destination:D\n" (no space, as ever)
QString couldNotSaveInfoMessage();               // "Couldn't save exported file."

// Copies the store into the bundle layout; stops at the first failing step and returns
// its message.
std::optional<QString> copyToLogarchive(const QString& source, const QString& dest);

// The Info.plist dictionary for a version.plist dictionary, tick count and UUID.
QVariantMap infoDictionary(QVariantMap versionPlist, quint64 continuousTime, const QString& uuid);

// Writes D/Info.plist. A bundle without a readable Extra/version.plist cannot be
// assembled: the program stops with a message on standard error. Returns the message for
// a failed write.
std::optional<QString> makeInfoFile(const QString& dest);

}  // namespace tarnbeck
