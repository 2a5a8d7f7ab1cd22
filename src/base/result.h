#pragma once

#include <QString>
#include <expected>
#include <utility>

// Why something expected could not be done.
struct Error {
    enum class Kind {
        Failed,      // the machine or the input did not allow it
        Invalid,     // the words or values asked for make no sense
        NotFound,    // nothing there to work on
        Unavailable, // this machine or session can't do it at all
        Denied,      // the user or the system withheld a permission
        Cancelled,   // the user or the owner gave up; never shown
    };

    Kind kind = Kind::Failed;
    QString message; // one sentence for the user
    QString detail;  // more for the log; may be empty

    bool operator==(const Error &) const = default;
    bool isCancelled() const { return kind == Kind::Cancelled; }
};

// A value, or the reason why there is none. Must be looked at.
template <typename T>
class [[nodiscard]] Result : public std::expected<T, Error> {
public:
    using std::expected<T, Error>::expected;
};

inline std::unexpected<Error> fail(Error::Kind kind, QString message, QString detail = {})
{
    return std::unexpected(Error{kind, std::move(message), std::move(detail)});
}
inline std::unexpected<Error> fail(QString message, QString detail = {})
{
    return fail(Error::Kind::Failed, std::move(message), std::move(detail));
}
inline std::unexpected<Error> cancelled()
{
    return fail(Error::Kind::Cancelled, {});
}
