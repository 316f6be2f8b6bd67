#pragma once

#include <QCborMap>

namespace tessary::imaging {

/// Does what one request asks for and returns the reply; failures are replies too. May empty the request. See
/// ImagingProtocol.
[[nodiscard]] QCborMap answerImagingRequest(QCborMap& request);

} // namespace tessary::imaging
