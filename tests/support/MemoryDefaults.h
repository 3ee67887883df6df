#pragma once

#include "Defaults.h"

#include <QMap>

namespace quillmere {

/** Keeps numbers in memory and counts the writes. */
class MemoryDefaults : public Defaults
{
public:
    double number(const QString& key) const override { return m_numbers.value(key, 0.0); }
    bool contains(const QString& key) const override { return m_numbers.contains(key); }
    void setNumber(const QString& key, double value) override
    {
        m_numbers.insert(key, value);
        ++m_writes;
    }
    void remove(const QString& key) override
    {
        m_numbers.remove(key);
        ++m_writes;
    }

    int writes() const { return m_writes; }

private:
    QMap<QString, double> m_numbers;
    int m_writes = 0;
};

} // namespace quillmere
