#include "IniDefaults.h"

class IniDefaults::Writer
{
};

IniDefaults::IniDefaults(QString path) : m_path(std::move(path)), m_writer(std::make_unique<Writer>()) {}

IniDefaults::~IniDefaults() = default;

void IniDefaults::read() const {}

double IniDefaults::number(const QString& key) const
{
    return m_values.value(key).toDouble();
}

bool IniDefaults::contains(const QString& key) const
{
    return m_values.contains(key);
}

void IniDefaults::setNumber(const QString& key, double value)
{
    m_values.insert(key, value);
}

void IniDefaults::remove(const QString& key)
{
    m_values.remove(key);
}
