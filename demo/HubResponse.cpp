#include "HubResponse.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <sstream>
#include <stdexcept>
#include <zlib.h>

namespace quillmere::demo {

namespace {

/// Calls `visit` with each entry of a comma-separated header, without surrounding white space.
template<typename Visit>
void forEachEntry(const std::string& header, Visit visit)
{
    std::istringstream list(header);
    for (std::string entry; std::getline(list, entry, ',');) {
        const auto first = entry.find_first_not_of(" \t");
        const auto last = entry.find_last_not_of(" \t");
        if (first != std::string::npos) {
            visit(entry.substr(first, last - first + 1));
        }
    }
}

} // namespace

HubResponse jsonResponse(const nlohmann::json& document, int status)
{
    using Handler = nlohmann::json::error_handler_t;
    return {status, "application/json", document.dump(-1, ' ', false, Handler::replace), true};
}

HubResponse errorResponse(int status, const std::string& message)
{
    return jsonResponse({{"error", message}}, status);
}

std::string etagOf(const std::string& body)
{
    std::uint64_t hash = 0xCBF29CE484222325u; // 64-bit FNV-1a
    for (const char letter : body) {
        hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001B3u;
    }
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%016llx-%zx", static_cast<unsigned long long>(hash), body.size());
    return text.data();
}

bool matchesEtag(const std::string& ifNoneMatch, const std::string& etag)
{
    bool found = false;
    forEachEntry(ifNoneMatch, [&](std::string entry) {
        if (entry.starts_with("W/")) {
            entry.erase(0, 2);
        }
        found = found || entry == "*" || entry == '"' + etag + '"';
    });
    return found;
}

bool acceptsGzip(const std::string& acceptEncoding)
{
    bool allowed = false;
    forEachEntry(acceptEncoding, [&](const std::string& entry) {
        const std::string name = entry.substr(0, entry.find_first_of("; \t"));
        const bool refused =
            entry.find("q=0") != std::string::npos && entry.find_first_of("123456789") == std::string::npos;
        allowed = allowed || ((name == "gzip" || name == "*") && !refused);
    });
    return allowed;
}

std::string gzip(const std::string& body)
{
    constexpr int gzipWindow = 15 + 16; // the largest window, with a gzip header
    constexpr int memoryLevel = 8;
    z_stream stream{};
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, gzipWindow, memoryLevel, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("zlib did not start");
    }
    std::string packed(deflateBound(&stream, body.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(body.data())); // zlib only reads from it
    stream.avail_in = static_cast<uInt>(body.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH); // cannot run out of space: deflateBound() gives an upper bound
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

} // namespace quillmere::demo
