#include "JsonDocument.h"

#include "HugeNumbers.h"
#include "JsonInteger.h"

#include <QStringConverter>

#include <limits>
#include <nlohmann/json.hpp>

namespace {

/** Keys and offsets have at least so many bits; no answer comes near. */
constexpr qsizetype maxBytes = (1 << 28) - 1;

/** 0 when no escape of a surrogate stands at `offset`, else its code unit. */
unsigned surrogateEscapeAt(const QByteArray& bytes, qsizetype offset)
{
    if (bytes.size() - offset < 6 || bytes[offset] != '\\' || bytes[offset + 1] != 'u')
        return 0;
    unsigned unit = 0;
    for (qsizetype place = offset + 2; place < offset + 6; ++place) {
        const char character = bytes[place];
        const char lower = char(character | 0x20);
        const bool isDigit = character >= '0' && character <= '9';
        if (!isDigit && (lower < 'a' || lower > 'f'))
            return 0;
        unit = unit * 16 + unsigned(isDigit ? character - '0' : lower - 'a' + 10);
    }
    return QChar::isSurrogate(unit) ? unit : 0;
}

/** The parser refuses half a surrogate pair, so each is replaced beforehand; the length stays. */
QByteArray withoutLoneSurrogates(QByteArray bytes)
{
    qsizetype offset = bytes.indexOf('\\');
    while (offset >= 0) {
        qsizetype length = 2;
        if (const unsigned unit = surrogateEscapeAt(bytes, offset)) {
            const bool isPair =
                QChar::isHighSurrogate(unit) && QChar::isLowSurrogate(surrogateEscapeAt(bytes, offset + 6));
            if (!isPair)
                bytes.replace(offset, 6, "\\uFFFD");
            length = isPair ? 12 : 6;
        }
        offset = bytes.indexOf('\\', offset + length);
    }
    return bytes;
}

QString fromUtf8(std::string_view text)
{
    // The toolkit's plain conversion drops a byte order mark in front, which is a character of the text here.
    if (!text.starts_with("\xEF\xBB\xBF"))
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    using Flag = QStringConverter::Flag;
    return QStringDecoder(QStringConverter::Utf8, Flag::Stateless | Flag::ConvertInitialBom)
        .decode(QByteArrayView(text.data(), qsizetype(text.size())));
}

} // namespace

/** Takes the parser's events and lays the values down. */
class JsonDocument::Builder : public nlohmann::json_sax<nlohmann::json>
{
public:
    explicit Builder(JsonDocument& document) : m_document(document) {}

    bool null() override { return add(Type::Null); }
    bool boolean(bool value) override { return addInteger(Type::Bool, value ? 1 : 0); }
    bool number_integer(number_integer_t value) override { return addInteger(Type::Integer, value); }
    bool number_unsigned(number_unsigned_t value) override
    {
        const bool fits = value <= number_unsigned_t(std::numeric_limits<qint64>::max());
        return fits ? addInteger(Type::Integer, qint64(value)) : add(Type::Fraction);
    }
    bool number_float(number_float_t, const string_t& token) override
    {
        const auto value = exactJsonInteger(token);
        return value ? addInteger(Type::Integer, *value) : add(Type::Fraction);
    }
    bool string(string_t& value) override
    {
        if (!add(Type::String))
            return false;
        m_document.m_nodes.back().text = keep(value);
        return true;
    }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return open(Type::Object); }
    bool key(string_t& name) override
    {
        m_key = keep(name);
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(Type::Array); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception& error) override
    {
        constexpr int outOfRange = 406;
        m_metHugeNumber = error.id == outOfRange;
        return false;
    }

    /** Whether the document was refused for a number beyond a double's range. */
    bool metHugeNumber() const { return m_metHugeNumber; }

private:
    Node::Span keep(const string_t& text)
    {
        const auto offset = std::uint32_t(m_document.m_text.size());
        m_document.m_text += text;
        return {offset, std::uint32_t(text.size())};
    }
    bool add(Type type) { return addInteger(type, 0); }
    bool addInteger(Type type, qint64 value)
    {
        if (m_document.m_nodes.size() == size_t(maxValues))
            return false;
        Node node;
        node.integer = value;
        node.keyOffset = m_key.offset;
        node.keyLength = m_key.length;
        node.type = std::uint32_t(type);
        m_document.m_nodes.push_back(node);
        m_key = {};
        return true;
    }
    bool open(Type type)
    {
        m_open.push_back(std::uint32_t(m_document.m_nodes.size()));
        return add(type) && m_open.size() <= size_t(maxDepth);
    }
    bool close()
    {
        m_document.m_nodes[m_open.back()].end = std::uint32_t(m_document.m_nodes.size());
        m_open.pop_back();
        return true;
    }

    JsonDocument& m_document;
    Node::Span m_key{};
    bool m_metHugeNumber = false;
    std::vector<std::uint32_t> m_open; ///< the containers that are not closed yet
};

std::optional<JsonDocument> JsonDocument::parse(const QByteArray& bytes)
{
    // The parser would take a zero byte for the end and believe what stands before it.
    if (bytes.size() > maxBytes || bytes.contains('\0'))
        return std::nullopt;
    QByteArray whole = withoutLoneSurrogates(bytes);
    while (true) {
        JsonDocument document;
        document.m_text.reserve(size_t(whole.size()));
        Builder builder(document);
        if (nlohmann::json::sax_parse(whole.cbegin(), whole.cend(), &builder))
            return document;
        QByteArray calmed = builder.metHugeNumber() ? withoutHugeNumbers(whole) : whole;
        if (calmed == whole)
            return std::nullopt;
        whole = std::move(calmed);
    }
}

bool JsonValue::isObject() const
{
    return m_document->is(*this, JsonDocument::Type::Object);
}

bool JsonValue::isArray() const
{
    return m_document->is(*this, JsonDocument::Type::Array);
}

std::optional<bool> JsonValue::toBool() const
{
    if (!m_document->is(*this, JsonDocument::Type::Bool))
        return std::nullopt;
    return m_document->node(*this).integer != 0;
}

std::optional<qint64> JsonValue::toInteger() const
{
    if (!m_document->is(*this, JsonDocument::Type::Integer))
        return std::nullopt;
    return m_document->node(*this).integer;
}

std::optional<QString> JsonValue::toString() const
{
    if (!m_document->is(*this, JsonDocument::Type::String))
        return std::nullopt;
    const auto text = m_document->node(*this).text;
    return fromUtf8({m_document->m_text.data() + text.offset, text.length});
}

std::string_view JsonValue::key() const
{
    const auto& node = m_document->node(*this);
    return {m_document->m_text.data() + node.keyOffset, node.keyLength};
}

QString JsonValue::keyText() const
{
    return fromUtf8(key());
}

std::optional<JsonValue> JsonValue::member(std::string_view key) const
{
    std::optional<JsonValue> found;
    forEach([&](const JsonValue& value) {
        if (value.key() == key)
            found = value;
        return true;
    });
    return found;
}

qsizetype JsonValue::count() const
{
    qsizetype count = 0;
    forEach([&count](const JsonValue&) { return ++count > 0; });
    return count;
}
