#include "IniDefaults.h"

#include "IniFile.h"

#include <QMutex>
#include <QThreadPool>

#include <utility>

/** Writes on one background thread; what is asked for during a write goes out with the next one. */
class IniDefaults::Writer
{
public:
    explicit Writer(QString path) : m_path(std::move(path)) { m_pool.setMaxThreadCount(1); }
    ~Writer() { flush(); }

    void flush() { m_pool.waitForDone(); }

    /** `change` is invalid to take the key out; `whole` is everything, for a file that has to be begun anew. */
    void write(const QString& key, const QVariant& change, const QMap<QString, QVariant>& whole)
    {
        const QMutexLocker lock(&m_mutex);
        m_changes.insert(key, change);
        m_whole = whole;
        if (!std::exchange(m_isScheduled, true))
            m_pool.start([this] { writeChanges(); });
    }

private:
    void writeChanges()
    {
        QMutexLocker lock(&m_mutex);
        m_isScheduled = false;
        const auto changes = std::exchange(m_changes, {});
        const auto whole = m_whole;
        lock.unlock();
        if (IniFile::write(m_path, changes, whole))
            return;
        // A place that cannot be written now may be later: what failed goes out with the next change.
        lock.relock();
        for (auto change = changes.begin(); change != changes.end(); ++change) {
            if (!m_changes.contains(change.key()))
                m_changes.insert(change.key(), *change);
        }
    }

    const QString m_path;
    QMutex m_mutex;
    QMap<QString, QVariant> m_changes; ///< with m_whole and m_isScheduled, under m_mutex
    QMap<QString, QVariant> m_whole;
    bool m_isScheduled = false;
    QThreadPool m_pool; ///< last, so that it is waited for before the rest goes
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
