#include "JsonDocument.h"

#include "JsonNumbers.h"

#include <QStringConverter>

#include <limits>
#include <nlohmann/json.hpp>

namespace quillmere {

namespace {

/** Key lengths are stored in 28 bits. No response is that large. */
constexpr qsizetype maxBytes = (1 << 28) - 1;

/** The code unit if the text at `offset` is a \u escape of a surrogate, else 0. */
unsigned surrogateEscapeAt(const QByteArray& bytes, qsizetype offset)
{
    if (bytes.size() - offset < 6 || bytes[offset] != '\\' || bytes[offset + 1] != 'u')
        return 0;
    unsigned unit = 0;
    for (qsizetype index = offset + 2; index < offset + 6; ++index) {
        const char character = bytes[index];
        const char lower = char(character | 0x20);
        const bool isDigit = character >= '0' && character <= '9';
        if (!isDigit && (lower < 'a' || lower > 'f'))
            return 0;
        unit = unit * 16 + unsigned(isDigit ? character - '0' : lower - 'a' + 10);
    }
    return QChar::isSurrogate(unit) ? unit : 0;
}

/** Replaces each escaped lone surrogate, which the parser would reject, by \uFFFD. The length does not change. */
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
    // QString::fromUtf8() drops a byte order mark at the start. Here it is part of the text.
    if (!text.starts_with("\xEF\xBB\xBF"))
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    using Flag = QStringConverter::Flag;
    return QStringDecoder(QStringConverter::Utf8, Flag::Stateless | Flag::ConvertInitialBom)
        .decode(QByteArrayView(text.data(), qsizetype(text.size())));
}

} // namespace

/** Receives the parser's events and stores the values as nodes. */
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
        m_document.m_nodes.back().text = storeText(value);
        return true;
    }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return openContainer(Type::Object); }
    bool key(string_t& name) override
    {
        m_key = storeText(name);
        return true;
    }
    bool end_object() override { return closeContainer(); }
    bool start_array(std::size_t) override { return openContainer(Type::Array); }
    bool end_array() override { return closeContainer(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception& error) override
    {
        constexpr int outOfRange = 406;
        m_foundHugeNumber = error.id == outOfRange;
        return false;
    }

    /** Whether parsing failed because of a number outside the range of a double. */
    bool foundHugeNumber() const { return m_foundHugeNumber; }

private:
    Node::Span storeText(const string_t& text)
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
    bool openContainer(Type type)
    {
        m_openContainers.push_back(std::uint32_t(m_document.m_nodes.size()));
        return add(type) && m_openContainers.size() <= size_t(maxDepth);
    }
    bool closeContainer()
    {
        m_document.m_nodes[m_openContainers.back()].end = std::uint32_t(m_document.m_nodes.size());
        m_openContainers.pop_back();
        return true;
    }

    JsonDocument& m_document;
    Node::Span m_key{};
    bool m_foundHugeNumber = false;
    std::vector<std::uint32_t> m_openContainers; ///< indexes of the containers that are still open
};

std::optional<JsonDocument> JsonDocument::parse(const QByteArray& bytes)
{
    // The parser would treat a zero byte as the end of the document and accept the part before it.
    if (bytes.size() > maxBytes || bytes.contains('\0'))
        return std::nullopt;
    QByteArray text = withoutLoneSurrogates(bytes);
    while (true) {
        JsonDocument document;
        document.m_text.reserve(size_t(text.size()));
        Builder builder(document);
        if (nlohmann::json::sax_parse(text.cbegin(), text.cend(), &builder))
            return document;
        QByteArray replaced = builder.foundHugeNumber() ? withoutHugeNumbers(text) : text;
        if (replaced == text)
            return std::nullopt;
        text = std::move(replaced);
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

} // namespace quillmere
