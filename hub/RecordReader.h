#pragma once

#include "JsonDocument.h"
#include "Text.h"

#include <QList>
#include <QMap>

#include <optional>

namespace quillmere {

/**
 * Reads the fields of one record from a JSON object. A member that is missing, null or of the wrong type leaves its
 * field unchanged, at the default. Usable on any thread.
 *
 * Each record type has an overload of `readFields(const RecordReader&, Record&)`, which lists its fields.
 */
class RecordReader
{
public:
    explicit RecordReader(const JsonValue& object) : m_object(object) {}

    template<typename Field>
    void read(std::string_view key, Field& field) const;

    /** Like read(), but treats an empty text as a missing one. */
    void readNonEmpty(std::string_view key, QString& field) const
    {
        QString text;
        read(key, text);
        if (!text.isEmpty())
            field = std::move(text);
    }

    /** Like read(), but cuts a text after `maxLength` UTF-16 units. */
    template<typename Text>
    void readTruncated(std::string_view key, Text& field, qsizetype maxLength = maxTextLength) const
    {
        read(key, field);
        truncate(field, maxLength);
    }

private:
    static void truncate(QString& text, qsizetype maxLength) { text = truncatedText(text, maxLength); }
    static void truncate(std::optional<QString>& text, qsizetype maxLength)
    {
        if (text)
            truncate(*text, maxLength);
    }

    JsonValue m_object;
};

// One convert() overload for each field type. Each returns false if any part of the value has the wrong type.

inline bool convert(const JsonValue& value, bool& field)
{
    const auto converted = value.toBool();
    field = converted.value_or(false);
    return converted.has_value();
}

inline bool convert(const JsonValue& value, qint64& field)
{
    const auto converted = value.toInteger();
    field = converted.value_or(0);
    return converted.has_value();
}

inline bool convert(const JsonValue& value, QString& field)
{
    auto converted = value.toString();
    if (!converted)
        return false;
    field = *std::move(converted);
    return true;
}

template<typename Record>
bool convert(const JsonValue& value, Record& record) requires requires(const RecordReader& reader)
{
    readFields(reader, record);
}
{
    if (!value.isObject())
        return false;
    readFields(RecordReader(value), record);
    return true;
}

template<typename Element>
bool convert(const JsonValue& value, std::optional<Element>& field)
{
    return convert(value, field.emplace());
}

template<typename Element>
bool convert(const JsonValue& value, QList<Element>& list)
{
    if (!value.isArray())
        return false;
    list.reserve(value.count());
    return value.forEach([&list](const JsonValue& element) { return convert(element, list.emplaceBack()); });
}

template<typename Element>
bool convert(const JsonValue& value, QMap<QString, Element>& map)
{
    if (!value.isObject())
        return false;
    // If a key occurs more than once, only the last member counts, even if the others have the wrong type.
    QMap<QString, JsonValue> members;
    value.forEach([&members](const JsonValue& member) {
        members.insert(member.keyText(), member);
        return true;
    });
    for (auto member = members.cbegin(); member != members.cend(); ++member) {
        if (!convert(member.value(), map[member.key()]))
            return false;
    }
    return true;
}

template<typename Field>
void RecordReader::read(std::string_view key, Field& field) const
{
    const auto value = m_object.member(key);
    if (!value)
        return;
    Field converted{};
    if (convert(*value, converted))
        field = std::move(converted);
}

} // namespace quillmere
