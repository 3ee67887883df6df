#pragma once

#include <QString>

#include <variant>

namespace quillmere {

/** The error type of HubAPI. The viewer sees its description as it is; callers add nothing to it. */
class HubError
{
public:
    static HubError http(int status);
    static HubError transport(QString message);
    static HubError badURL();

    bool operator==(const HubError&) const = default;

    QString errorDescription() const;

private:
    struct Http
    {
        int status;
        bool operator==(const Http&) const = default;
    };
    struct Transport
    {
        QString message;
        bool operator==(const Transport&) const = default;
    };
    struct BadURL
    {
        bool operator==(const BadURL&) const = default;
    };
    using Case = std::variant<Http, Transport, BadURL>;

    explicit HubError(Case which);

    Case m_case;
};

} // namespace quillmere
