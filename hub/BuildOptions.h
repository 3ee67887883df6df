#pragma once

#include <string_view>

/** The values of the build options. The bytes exist as long as the process. */
namespace quillmere::BuildOptions {

extern const std::string_view hubBase;         ///< QUILLMERE_HUB_BASE
extern const std::string_view hubCertificates; ///< content of the file named by QUILLMERE_HUB_CA; empty if none

} // namespace quillmere::BuildOptions
