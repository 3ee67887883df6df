#pragma once

#include "Defaults.h"
#include "Worker.h"

#include <QMap>
#include <QString>
#include <QVariant>

#include <mutex>
#include <optional>

namespace quillmere {

/**
 * Defaults stored in an INI file. The file is read once, at the first access. A background thread writes it by
 * replacing the whole file; changes made during a write are combined into the next one. A damaged file is renamed
 * before anything is written. If the file cannot be written, the numbers exist until the object is destroyed. Screen
 * thread only; the destructor waits for the last write.
 */
class IniDefaults : public Defaults
{
public:
    /** `path` is that of the file; its folder is created if needed. */
    explicit IniDefaults(QString path);

    double number(const QString& key) const override;
    bool contains(const QString& key) const override;
    void setNumber(const QString& key, double value) override;
    void remove(const QString& key) override;

    /** Waits until no write is running. Changes that could not be written are retried with the next change. */
    void flush();

private:
    const QMap<QString, QVariant>& values() const;
    /** Changes the number and schedules a write. An invalid `value` removes the key. */
    void change(const QString& key, const QVariant& value);
    bool writeChanges();

    const QString m_path;
    mutable std::optional<QMap<QString, QVariant>> m_values; ///< empty until the first access

    std::mutex m_mutex;                  ///< guards the three below
    QMap<QString, QVariant> m_changes;   ///< not yet written
    QMap<QString, QVariant> m_allValues; ///< copy of m_values, written if the file must be recreated
    bool m_isScheduled = false;          ///< a write is queued
    Worker m_worker; ///< last member: destroyed first, which waits for the thread that uses the others
};

} // namespace quillmere
