#include "tests/session/clients/OwnerOptions.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tessary::testing {

namespace {

std::string contentOf(const std::string& description)
{
    const auto colon = description.find(':');
    const std::string kind = description.substr(0, colon);
    const std::string value = colon == std::string::npos ? std::string() : description.substr(colon + 1);
    if (kind == "text")
        return value;
    if (kind == "size") // letters only, with its own length at the head
        return value + ":" + std::string(std::stoul(value) - value.size() - 1, 'x');
    if (kind != "file")
        throw std::invalid_argument("an offer is text:, size: or file:, not " + description);
    std::ifstream file(value, std::ios::binary);
    if (!file)
        throw std::invalid_argument("cannot read " + value);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// TARGET=KIND:VALUE; the target itself may hold an equals sign.
std::pair<std::string, std::string> offerOf(const std::string& description)
{
    for (const char* kind : {"=text:", "=size:", "=file:"}) {
        const auto position = description.find(kind);
        if (position != std::string::npos)
            return {description.substr(0, position), contentOf(description.substr(position + 1))};
    }
    throw std::invalid_argument("not an offer: " + description);
}

std::chrono::milliseconds milliseconds(const std::string& value)
{
    return std::chrono::milliseconds(std::stol(value));
}

} // namespace

OwnerOptions parseOwnerOptions(const std::vector<std::string>& arguments)
{
    OwnerOptions options;
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        const std::string& name = arguments[i];
        if (i + 1 == arguments.size())
            throw std::invalid_argument(name + " wants a value");
        const std::string& value = arguments[i + 1];
        if (name == "--offer")
            options.offers.push_back(offerOf(value));
        else if (name == "--selection")
            options.selection = value;
        else if (name == "--quit-after")
            options.quitAfter = milliseconds(value);
        else if (name == "--announce")
            options.announcedSize = static_cast<std::uint32_t>(std::stoul(value));
        else if (name == "--die-after")
            options.dieAfterPieces = std::stoul(value);
        else if (name == "--stall-after")
            options.stallAfterPieces = std::stoul(value);
        else if (name == "--stops")
            options.stopsItself = value == "yes";
        else if (name == "--piece")
            options.pieceSize = std::stoul(value);
        else if (name == "--series")
            options.seriesLength = std::stoi(value);
        else if (name == "--every")
            options.seriesInterval = milliseconds(value);
        else if (name == "--prefix")
            options.seriesPrefix = value;
        else
            throw std::invalid_argument("unknown option " + name);
    }
    return options;
}

} // namespace tessary::testing
