#pragma once

#include "bench/recognition/PictureSet.h"
#include "bench/recognition/RecognitionTable.h"
#include "platform/TextRecognizer.h"

namespace tessary::bench {

/// Which pictures to read and how.
struct RunOptions {
    QString folder;
    QString half;     ///< Empty: both.
    QString group;    ///< Empty: all.
    QString level;    ///< Empty: accurate, then fast.
    int readings = 0; ///< Show the readings of that many pictures, those with the most errors first.
};

/// Reads the set with that recogniser, one picture after another, after one that is not counted, so that the
/// models are loaded. The languages are those that the program passes, in their order.
/// A picture that fails counts as one of which nothing was read, and is told on the standard output.
/// @throws std::runtime_error when there are no such pictures.
[[nodiscard]] QCoro::Task<RecognitionTable> runRecognition(TextRecognizer* recognizer, RunOptions options);

} // namespace tessary::bench
