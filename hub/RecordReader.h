#pragma once

#include "BoundedText.h"
#include "JsonDocument.h"

#include <QList>
#include <QMap>

#include <optional>

/**
 * Reads the fields of one record from a JSON object, leniently: what is absent, null or of the wrong type leaves the
 * field as it is, at its default. Any thread.
 *
 * A record type says what its fields are by an overload of `readFields(const RecordReader&, Record&)`.
 */
class RecordReader
{
public:
    explicit RecordReader(const JsonValue& object) : m_object(object) {}

    template<typename Field>
    void read(std::string_view key, Field& field) const;

    /** For fields that take an empty text for an absent one. */
    void readUnlessEmpty(std::string_view key, QString& field) const
    {
        QString text;
        read(key, text);
        if (!text.isEmpty())
            field = std::move(text);
    }

    /** Of a text that is longer, only the beginning. */
    template<typename Text>
    void readBounded(std::string_view key, Text& field, qsizetype longest = longestReadText) const
    {
        read(key, field);
        bound(field, longest);
    }

private:
    static void bound(QString& text, qsizetype longest) { text = boundedText(text, longest); }
    static void bound(std::optional<QString>& text, qsizetype longest)
    {
        if (text)
            bound(*text, longest);
    }

    JsonValue m_object;
};

// One overload a type of field: the value, or nothing when any part of it is of the wrong type.

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
    // Of members with one key only the last counts, whatever the others were.
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
