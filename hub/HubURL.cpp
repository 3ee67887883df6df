#include "HubURL.h"

#include "BuildOptions.h"
#include "Text.h"

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

QUrl configuredBase()
{
    QUrl base(QString::fromUtf8(BuildOptions::hubBase), QUrl::StrictMode);
    if (!base.isValid() || base.scheme() != "https"_L1 || base.host().isEmpty() || !base.path().isEmpty())
        qFatal("The hub's base address is no https origin.");
    return base;
}

bool hasHttpHost(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == "http"_L1 || url.scheme() == "https"_L1);
}

} // namespace

const QUrl& hubBase()
{
    static const QUrl base = configuredBase();
    return base;
}

QByteArray hubCertificates()
{
    return QByteArray::fromRawData(BuildOptions::hubCertificates.data(),
                                   qsizetype(BuildOptions::hubCertificates.size()));
}

std::optional<QUrl> hubURL(const QString& path, const QUrl& base)
{
    if (path.isEmpty())
        return std::nullopt;
    const QUrl reference(wellFormed(path));
    if (!reference.isValid())
        return std::nullopt;
    const bool isAbsolute = path.startsWith("http://"_L1) || path.startsWith("https://"_L1);
    const QUrl url = isAbsolute ? reference : base.resolved(reference);
    // The reference may have its own scheme. Only http and https are allowed, so it cannot name a file or a script.
    return hasHttpHost(url) ? std::optional(url) : std::nullopt;
}

} // namespace quillmere
