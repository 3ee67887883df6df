#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/** The hub's https origin, fixed when the set was built; a value that is no such origin stops the program. */
const QUrl& hubBase();

/** The PEM certificates trusted beside the system's, fixed when the set was built; empty when there are none. */
QByteArray hubCertificates();

/**
 * The absolute address of a hub path, or of an address that begins with "http://" or "https://"; nothing when it does
 * not parse. An empty path is no address.
 */
std::optional<QUrl> hubURL(const QString& path, const QUrl& base = hubBase());
