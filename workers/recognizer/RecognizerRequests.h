#pragma once

#include "workers/recognizer/EngineSet.h"

#include <QCborMap>

namespace tessary::recognizer {

/// Reads the picture of one request and returns the reply; failures are replies too. Empties the request. See
/// RecognizerProtocol.
[[nodiscard]] QCborMap answerRecognizerRequest(EngineSet& engines, QCborMap& request);

} // namespace tessary::recognizer
