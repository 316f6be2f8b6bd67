#include "workers/recognizer/Components.h"

#include "workers/recognizer/DisjointSets.h"

namespace tessary::recognizer {
namespace {

/// Neighbouring pixels of one row, `end` excluded.
struct Run {
    int row = 0;
    int begin = 0;
    int end = 0;
};

void appendRuns(const GreyPlane& mask, int y, std::vector<Run>& runs)
{
    const uchar* row = mask.row(y);
    for (int x = 0; x < mask.width; ++x) {
        if (row[x] == 0)
            continue;
        const int begin = x;
        while (x < mask.width && row[x] != 0)
            ++x;
        runs.push_back({y, begin, x});
    }
}

} // namespace

std::vector<Component> findComponents(const GreyPlane& mask)
{
    std::vector<Run> runs;
    DisjointSets sets;
    size_t above = 0;
    for (int y = 0; y < mask.height; ++y) {
        const size_t first = runs.size();
        appendRuns(mask, y, runs);
        sets.grow(runs.size());
        size_t upper = above;
        for (size_t lower = first; lower < runs.size(); ++lower) {
            while (upper < first && runs[upper].end < runs[lower].begin)
                ++upper;
            for (size_t i = upper; i < first && runs[i].begin <= runs[lower].end; ++i)
                sets.join(i, lower);
        }
        above = first;
    }
    std::vector<Component> result;
    std::vector<size_t> places(runs.size(), runs.size());
    for (size_t i = 0; i < runs.size(); ++i) {
        size_t& place = places[sets.find(i)];
        const QRect box(runs[i].begin, runs[i].row, runs[i].end - runs[i].begin, 1);
        if (place == runs.size()) {
            place = result.size();
            result.push_back({});
        }
        result[place].box |= box;
        result[place].pixels += box.width();
    }
    return result;
}

} // namespace tessary::recognizer
