#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace demo {

/// What the hub answers, before it is put on the wire.
struct Answer
{
    int status = 200;
    std::string type;
    std::string body;
    bool isDocument = false; ///< a JSON document: has a validator, may be compressed, has no ranges
};

Answer documentAnswer(const nlohmann::json& document, int status = 200);
/// A JSON document that says what went wrong.
Answer errorAnswer(int status, const std::string& message);

/// A strong validator of a body, without its quotation marks.
std::string validatorOf(const std::string& body);
/// Whether an If-None-Match header names this validator.
bool namesValidator(const std::string& ifNoneMatch, const std::string& validator);
/// Whether an Accept-Encoding header allows gzip.
bool allowsGzip(const std::string& acceptEncoding);
std::string gzip(const std::string& body);

} // namespace demo
