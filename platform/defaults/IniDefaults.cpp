#include "IniDefaults.h"

#include "IniFile.h"

#include <utility>

namespace quillmere {

IniDefaults::IniDefaults(QString path) : m_path(std::move(path)) {}

const QMap<QString, QVariant>& IniDefaults::values() const
{
    if (!m_values)
        m_values = IniFile::read(m_path).values;
    return *m_values;
}

double IniDefaults::number(const QString& key) const
{
    return values().value(key).toDouble();
}

bool IniDefaults::contains(const QString& key) const
{
    return values().contains(key);
}

void IniDefaults::setNumber(const QString& key, double value)
{
    change(key, value);
}

void IniDefaults::remove(const QString& key)
{
    if (contains(key))
        change(key, {});
}

void IniDefaults::flush()
{
    m_worker.wait();
}

void IniDefaults::change(const QString& key, const QVariant& value)
{
    values();
    if (value.isValid())
        m_values->insert(key, value);
    else
        m_values->remove(key);
    const std::lock_guard lock(m_mutex);
    m_changes.insert(key, value);
    m_allValues = *m_values;
    if (!std::exchange(m_isScheduled, true))
        m_worker.run([this] { return writeChanges(); });
}

/** Runs on the background thread. Returns whether the changes were written. */
bool IniDefaults::writeChanges()
{
    std::unique_lock lock(m_mutex);
    m_isScheduled = false;
    const auto changes = std::exchange(m_changes, {});
    const auto allValues = m_allValues;
    lock.unlock();
    if (IniFile::write(m_path, changes, allValues))
        return true;
    // The file may become writable later: the failed changes are written together with the next one.
    lock.lock();
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (!m_changes.contains(change.key()))
            m_changes.insert(change.key(), *change);
    }
    return false;
}

} // namespace quillmere
