#pragma once

#include "workers/recognizer/EngineSet.h"
#include "workers/recognizer/PictureView.h"
#include "workers/recognizer/Script.h"
#include "workers/recognizer/TextLine.h"

#include <map>

namespace tessary::recognizer {

/// The lines of one picture, each read by a script's model at most once.
class LineReadings {
public:
    /// Borrows the pixels and the engines.
    LineReadings(const PictureView& picture, std::vector<TextLine> lines, EngineSet& engines);

    [[nodiscard]] size_t count() const { return m_lines.size(); }
    [[nodiscard]] const TextLine& line(size_t index) const { return m_lines[index]; }
    [[nodiscard]] const LineReading& read(size_t index, Script script);
    /// The lines' indices, those with the most room for characters first.
    [[nodiscard]] std::vector<size_t> longestFirst() const;
    /// How many square characters would fill the line.
    [[nodiscard]] double lengthOf(size_t index) const;

    /// Strokes above each other in the densest part of the line that is as wide as two of its characters.
    [[nodiscard]] double density(size_t index);

private:
    const GreyPlane& plane(size_t index);

    PictureView m_picture;
    std::vector<TextLine> m_lines;
    EngineSet& m_engines;
    std::map<size_t, GreyPlane> m_planes;
    std::map<std::pair<size_t, Script>, LineReading> m_readings;
};

} // namespace tessary::recognizer
