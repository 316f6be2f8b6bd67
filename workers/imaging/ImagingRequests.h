#pragma once

#include <QCborMap>

namespace tessary::imaging {

/// Does what one request asks for and returns the reply; failures are replies too. See ImagingProtocol.
[[nodiscard]] QCborMap answerImagingRequest(const QCborMap& request);

} // namespace tessary::imaging
