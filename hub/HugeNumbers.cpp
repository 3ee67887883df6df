#include "HugeNumbers.h"

#include <charconv>
#include <string_view>

namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view numberCharacters = "0123456789+-.eE";
constexpr std::string_view replacement = "0.5";

/** Removes the digits at the start of `text`. Returns false if there are none. */
bool skipDigits(std::string_view& text)
{
    const size_t count = std::min(text.find_first_not_of(digits), text.size());
    text.remove_prefix(count);
    return count > 0;
}

bool isNumber(std::string_view text)
{
    if (text.starts_with('-'))
        text.remove_prefix(1);
    if (text.starts_with('0'))
        text.remove_prefix(1);
    else if (!skipDigits(text))
        return false;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        if (!skipDigits(text))
            return false;
    }
    if (text.starts_with('e') || text.starts_with('E')) {
        text.remove_prefix(1);
        if (text.starts_with('+') || text.starts_with('-'))
            text.remove_prefix(1);
        if (!skipDigits(text))
            return false;
    }
    return text.empty();
}

bool isOutOfRange(std::string_view number)
{
    double value = 0;
    return std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc::result_out_of_range;
}

} // namespace

QByteArray withoutHugeNumbers(QByteArray json)
{
    bool isInString = false;
    for (qsizetype index = 0; index < json.size(); ++index) {
        const char character = json[index];
        if (isInString) {
            index += character == '\\' ? 1 : 0;
            isInString = character != '"';
        } else if (character == '"') {
            isInString = true;
        } else if (character == '-' || digits.find(character) != std::string_view::npos) {
            const std::string_view rest(json.constData() + index, size_t(json.size() - index));
            const std::string_view number = rest.substr(0, rest.find_first_not_of(numberCharacters));
            const auto length = qsizetype(number.size());
            if (isNumber(number) && isOutOfRange(number))
                json.replace(index, length,
                             QByteArray(replacement.data(), replacement.size()).leftJustified(length, ' '));
            index += length - 1;
        }
    }
    return json;
}
