#pragma once

#include "bench/tools/SampleTexts.h"
#include "store/AppPaths.h"
#include "store/ScreenshotRecord.h"

namespace tessary::bench {

/// Items of a library as somebody has it after a while: mostly texts, and for every thirtieth item a picture
/// without its files. Some of the oldest texts are about what later ones never mention. The same ones every
/// time.
class SampleLibrary {
public:
    explicit SampleLibrary(AppPaths paths);

    [[nodiscard]] ScreenshotRecord next();
    /// Adds so many items to both stores, in one transaction each. Blocks; @throws StoreError.
    void fill(qint64 count);

private:
    [[nodiscard]] ScreenshotRecord text();
    [[nodiscard]] ScreenshotRecord picture();
    void attribute(ScreenshotRecord& record);
    [[nodiscard]] QUuid identifier();

    AppPaths m_paths;
    SampleTexts m_texts;
    qint64 m_number = 0;
    qint64 m_former = 0; // the last item among the oldest
};

} // namespace tessary::bench
