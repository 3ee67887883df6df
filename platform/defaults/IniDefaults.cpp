#include "IniDefaults.h"

#include "IniFile.h"

#include <QMutex>
#include <QThreadPool>

#include <utility>

/** Writes on one background thread. Changes made during a write are combined into the next one. */
class IniDefaults::Writer
{
public:
    explicit Writer(QString path) : m_path(std::move(path)) { m_pool.setMaxThreadCount(1); }
    ~Writer() { flush(); }

    void flush() { m_pool.waitForDone(); }

    /** Schedules a write. An invalid `value` removes the key; `allValues` is written if the file must be recreated. */
    void write(const QString& key, const QVariant& value, const QMap<QString, QVariant>& allValues)
    {
        const QMutexLocker lock(&m_mutex);
        m_changes.insert(key, value);
        m_allValues = allValues;
        if (!std::exchange(m_isScheduled, true))
            m_pool.start([this] { writeChanges(); });
    }

private:
    void writeChanges()
    {
        QMutexLocker lock(&m_mutex);
        m_isScheduled = false;
        const auto changes = std::exchange(m_changes, {});
        const auto allValues = m_allValues;
        lock.unlock();
        if (IniFile::write(m_path, changes, allValues))
            return;
        // The file may become writable later: the failed changes are written together with the next one.
        lock.relock();
        for (auto change = changes.begin(); change != changes.end(); ++change) {
            if (!m_changes.contains(change.key()))
                m_changes.insert(change.key(), *change);
        }
    }

    const QString m_path;
    QMutex m_mutex;
    QMap<QString, QVariant> m_changes; ///< m_mutex guards this, m_allValues and m_isScheduled
    QMap<QString, QVariant> m_allValues;
    bool m_isScheduled = false;
    QThreadPool m_pool; ///< last member: destroyed first, which waits for the thread that uses the others
};

IniDefaults::IniDefaults(QString path) : m_path(std::move(path)), m_writer(std::make_unique<Writer>(m_path)) {}

IniDefaults::~IniDefaults() = default;

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
    m_writer->flush();
}

void IniDefaults::change(const QString& key, const QVariant& value)
{
    values();
    if (value.isValid())
        m_values->insert(key, value);
    else
        m_values->remove(key);
    m_writer->write(key, value, *m_values);
}
