#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace tessary {

/// Base of every error that Tessary throws. Each service derives its own, with a closed set of cases.
class Error : public std::exception {
public:
    /// The sentence for the person. Never holds an item's content.
    [[nodiscard]] virtual QString localizedDescription() const = 0;

    /// The same sentence in UTF-8, for code that only knows std::exception.
    [[nodiscard]] const char* what() const noexcept override
    {
        try {
            m_what = localizedDescription().toUtf8();
            return m_what.constData();
        } catch (...) {
            return "tessary::Error";
        }
    }

private:
    mutable QByteArray m_what;
};

/// The sentence for the person, of any exception.
[[nodiscard]] inline QString localizedDescription(const std::exception& error)
{
    if (const auto* ours = dynamic_cast<const Error*>(&error))
        return ours->localizedDescription();
    return QString::fromUtf8(error.what());
}

} // namespace tessary
