#pragma once

#include "Answer.h"
#include "Catalogue.h"
#include "LiveChannel.h"
#include "Tower.h"
#include "Transcripts.h"

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace demo {

/// The hub without its wires: from a path and a query to an answer. Any thread may ask it.
class Hub
{
public:
    using Query = std::multimap<std::string, std::string>; // decoded

    /// `recordings` is the folder that make-recordings made; throws std::runtime_error with a sentence when it is not.
    Hub(int port, std::filesystem::path recordings);

    Answer answer(const std::string& path, const Query& query);

    Tower& tower() { return m_tower; }
    /// Merges a document into the status (a null removes a member); an empty object takes all of that back.
    void amendStatus(const nlohmann::json& amendment);
    void resetStatus();
    /// From now on the tapes are those of this catalogue; null for the hub's own. Any of its tapes can still be asked for.
    void offer(std::shared_ptr<const Catalogue> catalogue);
    /// The hub's own tapes that no good hub would send: by id, the members with such values.
    nlohmann::json invalidTapes() const;

private:
    Answer status();
    Answer tapes(const Query& query);
    Answer tape(const std::string& id);
    Answer transcript(const std::string& id);
    Answer recording(const std::string& name, const std::string& file) const;
    Answer live(const std::string& name, const std::string& file) const;
    std::shared_ptr<const Catalogue> catalogue() const;
    std::shared_ptr<const SampleTape> find(const std::string& id) const;

    const std::filesystem::path m_recordings;
    const std::shared_ptr<const Catalogue> m_own;
    Transcripts m_transcripts;
    Tower m_tower;
    std::map<std::string, LiveChannel> m_channels; // by name; fixed once made
    mutable std::mutex m_mutex;
    nlohmann::json m_amendment = nlohmann::json::object();
    std::shared_ptr<const Catalogue> m_offered;
};

} // namespace demo
