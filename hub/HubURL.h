#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace quillmere {

/** The hub's https origin, fixed at build time. If the value is not an https origin, the program aborts. */
const QUrl& hubBase();

/** PEM certificates to trust in addition to the system's, fixed at build time. May be empty. */
QByteArray hubCertificates();

/**
 * Resolves a hub path, or an absolute URL that starts with "http://" or "https://", to an absolute URL. Returns nothing
 * if the path is empty or not valid.
 */
std::optional<QUrl> hubURL(const QString& path, const QUrl& base = hubBase());

} // namespace quillmere
