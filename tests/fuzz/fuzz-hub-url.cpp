#include "HubURL.h"

#include <cstdint>
#include <cstring>

using namespace Qt::StringLiterals;

namespace quillmere {

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The bytes are used as UTF-16 code units, so the text can contain unpaired surrogates.
    QString path(qsizetype(size / 2), Qt::Uninitialized);
    std::memcpy(path.data(), data, size / 2 * 2);
    static const QUrl base(u"https://hub.test:8443"_s);
    for (const QString& text : {path, QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size))}) {
        const auto url = hubURL(text, base);
        if (!url)
            continue;
        const bool isWeb = url->scheme() == "http"_L1 || url->scheme() == "https"_L1;
        // Parsing the sent address again must give the same address.
        const QByteArray sent = url->toEncoded();
        if (!isWeb || url->host().isEmpty() || QUrl::fromEncoded(sent, QUrl::StrictMode).toEncoded() != sent)
            __builtin_trap();
    }
    return 0;
}

} // namespace quillmere
