#pragma once

#include "Catalogue.h"
#include "HubResponse.h"
#include "LiveChannel.h"
#include "Tower.h"
#include "Transcripts.h"

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace quillmere::demo {

/// The hub without its HTTP server: maps a path and a query to a response. Thread-safe.
class Hub
{
public:
    using Query = std::multimap<std::string, std::string>; // percent-decoded

    /// `recordings` is a folder written by make-recordings. Throws std::runtime_error if a recording is missing there.
    Hub(int port, std::filesystem::path recordings);

    HubResponse respond(const std::string& path, const Query& query);

    Tower& tower() { return m_tower; }
    /// Merges a JSON merge patch (RFC 7396) into every later status response. resetStatus() removes all patches.
    void patchStatus(const nlohmann::json& patch);
    void resetStatus();
    /// Sets the catalogue to list; null sets the default one. Single tapes of the default catalogue stay available.
    void setCatalogue(std::shared_ptr<const Catalogue> catalogue);
    /// The tapes of the default catalogue that break the hub's schema on purpose: id to names of the invalid members.
    nlohmann::json invalidTapes() const;

private:
    HubResponse status();
    HubResponse tapes(const Query& query);
    HubResponse tape(const std::string& id);
    HubResponse transcript(const std::string& id);
    HubResponse recording(const std::string& name, const std::string& file) const;
    HubResponse live(const std::string& name, const std::string& file) const;
    std::shared_ptr<const Catalogue> catalogue() const;
    std::shared_ptr<const SampleTape> find(const std::string& id) const;

    const std::filesystem::path m_recordings;
    const std::shared_ptr<const Catalogue> m_defaultCatalogue;
    Transcripts m_transcripts;
    Tower m_tower;
    std::map<std::string, LiveChannel> m_channels; // by name; never changes after construction
    mutable std::mutex m_mutex;
    nlohmann::json m_statusPatch = nlohmann::json::object();
    std::shared_ptr<const Catalogue> m_catalogue;
};

} // namespace quillmere::demo
