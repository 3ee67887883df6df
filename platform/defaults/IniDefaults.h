#pragma once

#include "Defaults.h"

#include <QMap>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

/**
 * Numbers kept in an INI file. The file is read once, at the first access, and written on a background thread,
 * replaced as a whole; changes that come while a write is under way go out together in the next one. A damaged file
 * is set aside under another name before anything is written. Where nothing can be written, the numbers last as long
 * as the object. Screen thread only; its destructor waits for the last write.
 */
class IniDefaults : public Defaults
{
public:
    /** `path` is the file's; its folder need not exist. */
    explicit IniDefaults(QString path);
    ~IniDefaults() override;

    double number(const QString& key) const override;
    bool contains(const QString& key) const override;
    void setNumber(const QString& key, double value) override;
    void remove(const QString& key) override;

    /** Returns once nothing is being written; what could not be written still waits for the next change. */
    void flush();

private:
    class Writer;
    const QMap<QString, QVariant>& values() const;
    void change(const QString& key, const QVariant& value);

    QString m_path;
    mutable std::optional<QMap<QString, QVariant>> m_values; ///< empty until the first access
    std::unique_ptr<Writer> m_writer;
};
