#pragma once

#include "workers/recognizer/GreyPlane.h"
#include "workers/recognizer/LineReading.h"

#include <QByteArray>

#include <map>
#include <memory>

namespace tesseract {
class TessBaseAPI;
}

namespace tessary::recognizer {

/// What the engine is to look for in a picture.
enum class Layout {
    Line,
    Word, ///< Also where it sees no line: in very short ones.
};

/// The engines, one for each combination of models, loaded when first needed and kept.
class EngineSet {
public:
    /// @param folder of the models; empty: the engine's own.
    explicit EngineSet(QByteArray folder = {});
    ~EngineSet();
    EngineSet(const EngineSet&) = delete;
    EngineSet& operator=(const EngineSet&) = delete;

    /// Whether dictionaries help from now on.
    void setCorrection(bool on) { m_correction = on; }
    /// Whether the models (as "chi_tra+eng") are installed; loads them. Asked anew until they are.
    [[nodiscard]] bool has(const QByteArray& models);
    /// Reads dark text on white with models that are there. @returns what it sees, mostly one part.
    [[nodiscard]] QList<LineReading> read(const QByteArray& models, const GreyPlane& picture,
                                          Layout layout = Layout::Line);

private:
    [[nodiscard]] tesseract::TessBaseAPI* engine(const QByteArray& models);

    const QByteArray m_folder;
    bool m_correction = true;
    std::map<QByteArray, std::unique_ptr<tesseract::TessBaseAPI>> m_engines;
};

} // namespace tessary::recognizer
