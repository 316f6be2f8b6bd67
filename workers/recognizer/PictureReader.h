#pragma once

#include "workers/recognizer/EngineSet.h"
#include "workers/recognizer/PictureView.h"
#include "workers/recognizer/ReadLine.h"
#include "workers/recognizer/Script.h"

namespace tessary::recognizer {

/// How much work a reading may be.
enum class Effort { Accurate, Fast };

/// Reads the text of pictures with the engines given.
class PictureReader {
public:
    explicit PictureReader(EngineSet& engines) : m_engines(engines) {}

    /// @param scripts in the order of their likelihood, at least one. @returns the lines in reading order;
    /// after 13 s what was read until then, the longest lines first.
    /// @throws RecognizerFailure (ModelsMissing) when the first one's model is not installed, since its text
    /// would come out as nonsense; the others are done without.
    [[nodiscard]] QList<ReadLine> read(const PictureView& picture, const QList<Script>& scripts,
                                       Effort effort);

private:
    /// @returns the scripts that have models.
    [[nodiscard]] QList<Script> installed(const QList<Script>& scripts);

    EngineSet& m_engines;
};

} // namespace tessary::recognizer
