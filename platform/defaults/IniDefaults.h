#pragma once

#include "Defaults.h"

#include <QMap>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

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
    ~IniDefaults() override;

    double number(const QString& key) const override;
    bool contains(const QString& key) const override;
    void setNumber(const QString& key, double value) override;
    void remove(const QString& key) override;

    /** Waits until no write is running. Changes that could not be written are retried with the next change. */
    void flush();

private:
    class Writer;
    const QMap<QString, QVariant>& values() const;
    void change(const QString& key, const QVariant& value);

    QString m_path;
    mutable std::optional<QMap<QString, QVariant>> m_values; ///< empty until the first access
    std::unique_ptr<Writer> m_writer;
};
