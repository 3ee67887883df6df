#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

class JsonDocument;

/** A reference to one value of a document. Cheap to copy. The document must outlive it. Usable on any thread. */
class JsonValue
{
public:
    bool isObject() const;
    bool isArray() const;
    std::optional<bool> toBool() const;
    std::optional<qint64> toInteger() const; ///< a 64-bit integer; 1.0 and 1e3 count as integers
    std::optional<QString> toString() const;

    /** The key of an object's member, in UTF-8. Empty for an element of an array. */
    std::string_view key() const;
    QString keyText() const;

    /** The member with this key (UTF-8), the last one if there are several. The value must be an object. */
    std::optional<JsonValue> member(std::string_view key) const;

    /** The number of elements or members, in linear time. The value must be an array or an object. */
    qsizetype count() const;

    /** Calls `visit(JsonValue)` for each element or member in order, until it returns false. True if no call did. */
    template<typename Visit>
    bool forEach(Visit visit) const;

private:
    friend class JsonDocument;
    JsonValue(const JsonDocument& document, std::uint32_t index) : m_document(&document), m_index(index) {}

    const JsonDocument* m_document;
    std::uint32_t m_index;
};

/**
 * A parsed JSON document. Parsing is strict about the document: it fails on invalid UTF-8, a raw zero byte, trailing
 * text or more than `maxDepth` levels. It is lenient about values: a lone surrogate becomes U+FFFD, and whether a
 * number is an integer is decided from its text, not from a double.
 */
class JsonDocument
{
public:
    static constexpr int maxDepth = 512;

    /** Maximum number of values of all types. A small document could contain millions; a real page has far fewer. */
    static constexpr int maxValues = 1'000'000;

    /** Returns nothing if the bytes are not a JSON document, or exceed `maxDepth` or `maxValues`. */
    static std::optional<JsonDocument> parse(const QByteArray& bytes);

    JsonValue root() const { return {*this, 0}; }

private:
    friend class JsonValue;
    class Builder;

    enum class Type : std::uint32_t { Null, Bool, Integer, Fraction, String, Array, Object };

    /** Nodes are stored in document order, a container before its content. Strings are stored in one buffer. */
    struct Node
    {
        struct Span
        {
            std::uint32_t offset;
            std::uint32_t length;
        };
        union {
            qint64 integer;    ///< value of an Integer or a Bool
            Span text;         ///< value of a String
            std::uint32_t end; ///< Array or Object: the index after its content
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

} // namespace quillmere
