#pragma once

#include <string_view>

/** What the options of the build fixed; the bytes live as long as the process. */
namespace BuildOptions {

extern const std::string_view hubBase;         ///< QUILLMERE_HUB_BASE
extern const std::string_view hubCertificates; ///< the bytes of the file that QUILLMERE_HUB_CA named, or none

} // namespace BuildOptions
