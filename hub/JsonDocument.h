#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class JsonDocument;

/** One value of a document: a place in it, cheap to copy. The document outlives it. Any thread. */
class JsonValue
{
public:
    bool isObject() const;
    bool isArray() const;
    std::optional<bool> toBool() const;
    std::optional<qint64> toInteger() const; ///< of 64 bits; 1.0 and 1e3 are integers too
    std::optional<QString> toString() const;

    /** The member's name, in UTF-8; empty for an element of an array. */
    std::string_view key() const;
    QString keyText() const;

    /** The member with this key, the last of several; `key` in UTF-8. The value is an object. */
    std::optional<JsonValue> member(std::string_view key) const;

    /** How many elements or members; the value is an array or an object. Counts them. */
    qsizetype count() const;

    /** Calls `visit(JsonValue)` for each element or member in their order until it answers false; whether none did. */
    template<typename Visit>
    bool forEach(Visit visit) const;

private:
    friend class JsonDocument;
    JsonValue(const JsonDocument& document, std::uint32_t index) : m_document(&document), m_index(index) {}

    const JsonDocument* m_document;
    std::uint32_t m_index;
};

/**
 * A parsed JSON document. Strict about the document: invalid UTF-8, a raw zero byte, trailing text or more than
 * `maxDepth` levels fail. Lenient about values: half a surrogate pair becomes U+FFFD, a number is judged by its text.
 */
class JsonDocument
{
public:
    static constexpr int maxDepth = 512;

    /** Of all kinds, in one document: far above any honest page, as a short text may hold millions of them. */
    static constexpr int maxValues = 1'000'000;

    /** Nothing when the bytes are no JSON document, nest deeper than `maxDepth` or hold more than `maxValues`. */
    static std::optional<JsonDocument> parse(const QByteArray& bytes);

    JsonValue root() const { return {*this, 0}; }

private:
    friend class JsonValue;
    class Builder;

    enum class Type : std::uint32_t { Null, Bool, Integer, Fraction, String, Array, Object };

    /** Values lie in the order of the text, a container before its content; texts lie in one buffer. */
    struct Node
    {
        struct Span
        {
            std::uint32_t offset;
            std::uint32_t length;
        };
        union {
            qint64 integer;    ///< of an integer or a Bool
            Span text;         ///< of a string
            std::uint32_t end; ///< of a container: the index past its content
        };
        std::uint32_t keyOffset;
        std::uint32_t keyLength : 28;
        std::uint32_t type : 4;
    };
    static_assert(sizeof(Node) == 16);

    const Node& node(const JsonValue& value) const { return m_nodes[value.m_index]; }
    std::uint32_t next(std::uint32_t index) const;
    bool is(const JsonValue& value, Type type) const { return node(value).type == std::uint32_t(type); }

    std::vector<Node> m_nodes;
    std::string m_text;
};

inline std::uint32_t JsonDocument::next(std::uint32_t index) const
{
    const Node& node = m_nodes[index];
    return node.type >= std::uint32_t(Type::Array) ? node.end : index + 1;
}

template<typename Visit>
bool JsonValue::forEach(Visit visit) const
{
    const std::uint32_t end = m_document->node(*this).end;
    for (std::uint32_t index = m_index + 1; index < end; index = m_document->next(index)) {
        if (!visit(JsonValue(*m_document, index)))
            return false;
    }
    return true;
}
