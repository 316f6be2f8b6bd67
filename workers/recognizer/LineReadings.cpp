#include "workers/recognizer/LineReadings.h"

#include "workers/recognizer/InkDensity.h"
#include "workers/recognizer/InkGaps.h"
#include "workers/recognizer/LineNormalizer.h"

namespace tessary::recognizer {

LineReadings::LineReadings(const PictureView& picture, std::vector<TextLine> lines, EngineSet& engines)
    : m_picture(picture),
      m_lines(std::move(lines)),
      m_engines(engines)
{
}

const GreyPlane& LineReadings::plane(size_t index)
{
    GreyPlane& plane = m_planes[index];
    if (plane.isEmpty())
        plane = normalized(m_picture, m_lines[index]);
    return plane;
}

const LineReading& LineReadings::read(size_t index, Script script)
{
    const auto [entry, isNew] = m_readings.try_emplace({index, script});
    if (!isNew)
        return entry->second;
    const GreyPlane& picture = plane(index);
    QList<LineReading> parts = m_engines.read(modelOf(script), picture);
    if (parts.isEmpty() && !m_lines[index].maybeIcon)
        parts = m_engines.read(modelOf(script), picture, Layout::Word);
    for (const LineReading& part : parts)
        entry->second += part;
    measureGaps(entry->second, picture, LineSize().height);
    return entry->second;
}

double LineReadings::density(size_t index)
{
    return densestStrokes(plane(index), 2 * LineSize().height);
}

std::vector<size_t> LineReadings::longestFirst() const
{
    std::vector<size_t> order(m_lines.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_sort(order.begin(), order.end(),
                     [this](size_t one, size_t other) { return lengthOf(one) > lengthOf(other); });
    return order;
}

double LineReadings::lengthOf(size_t index) const
{
    const QRect& box = m_lines[index].box;
    return double(box.width()) / std::max(1, box.height());
}

} // namespace tessary::recognizer
