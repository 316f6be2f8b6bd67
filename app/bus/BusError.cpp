#include "app/bus/BusError.h"

#include <array>
#include <optional>

namespace tessary {
namespace {

constexpr std::array kCases{BusError::Case::NotFound, BusError::Case::InvalidArgument,
                            BusError::Case::Failed};
constexpr std::array kNames{"NotFound", "InvalidArgument", "Failed"};

} // namespace

QString BusError::name(Case which)
{
    return QStringLiteral("com.tessary.Tessary1.Error.") +
           QLatin1String(kNames.at(static_cast<std::size_t>(which)));
}

std::optional<BusError::Case> BusError::caseOf(const QString& name)
{
    for (const Case which : kCases) {
        if (BusError::name(which) == name)
            return which;
    }
    return std::nullopt;
}

} // namespace tessary
