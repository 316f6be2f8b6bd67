#include "workers/recognizer/EngineSet.h"

#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

namespace tessary::recognizer {
namespace {

ReadSymbol symbolAt(const tesseract::ResultIterator& place)
{
    const std::unique_ptr<const char[]> text(place.GetUTF8Text(tesseract::RIL_SYMBOL));
    ReadSymbol symbol{.text = QString::fromUtf8(text.get()),
                      .confidence = double(place.Confidence(tesseract::RIL_SYMBOL)),
                      .blankBefore = place.IsAtBeginningOf(tesseract::RIL_WORD)};
    int top = 0;
    int bottom = 0;
    place.BoundingBox(tesseract::RIL_SYMBOL, &symbol.left, &top, &symbol.right, &bottom);
    return symbol;
}

QList<LineReading> linesOf(tesseract::TessBaseAPI& engine)
{
    QList<LineReading> lines;
    const std::unique_ptr<tesseract::ResultIterator> place(engine.GetIterator());
    if (!place)
        return lines;
    do {
        if (place->Empty(tesseract::RIL_SYMBOL))
            continue;
        if (lines.isEmpty() || place->IsAtBeginningOf(tesseract::RIL_TEXTLINE))
            lines.append(LineReading());
        lines.last().append(symbolAt(*place));
    } while (place->Next(tesseract::RIL_SYMBOL));
    for (LineReading& line : lines)
        line.first().blankBefore = false;
    return lines;
}

std::unique_ptr<tesseract::TessBaseAPI> load(const QByteArray& folder, const QByteArray& models,
                                             bool correction)
{
    auto engine = std::make_unique<tesseract::TessBaseAPI>();
    const char* const onOrOff = correction ? "1" : "0";
    const std::vector<std::string> names{"load_system_dawg", "load_freq_dawg", "load_punc_dawg",
                                         "load_number_dawg", "debug_file"};
    const std::vector<std::string> values{onOrOff, onOrOff, onOrOff, onOrOff, "/dev/null"};
    if (engine->Init(folder.isEmpty() ? nullptr : folder.constData(), models.constData(),
                     tesseract::OEM_LSTM_ONLY, nullptr, 0, &names, &values, false) != 0)
        return nullptr;
    return engine;
}

} // namespace

EngineSet::EngineSet(QByteArray folder) : m_folder(std::move(folder)) {}

EngineSet::~EngineSet() = default;

tesseract::TessBaseAPI* EngineSet::engine(const QByteArray& models)
{
    const QByteArray key = m_correction ? models : models + " without dictionaries";
    auto& entry = m_engines[key];
    if (!entry)
        entry = load(m_folder, models, m_correction);
    return entry.get();
}

bool EngineSet::has(const QByteArray& models)
{
    return engine(models) != nullptr;
}

QList<LineReading> EngineSet::read(const QByteArray& models, const GreyPlane& picture, Layout layout)
{
    tesseract::TessBaseAPI* const reader = engine(models);
    if (!reader || picture.isEmpty())
        return {};
    constexpr int kScreenDpi = 144;
    reader->SetPageSegMode(layout == Layout::Line ? tesseract::PSM_SINGLE_LINE : tesseract::PSM_SINGLE_WORD);
    reader->SetImage(picture.pixels.data(), picture.width, picture.height, 1, picture.width);
    reader->SetSourceResolution(kScreenDpi);
    QList<LineReading> lines;
    if (reader->Recognize(nullptr) == 0)
        lines = linesOf(*reader);
    reader->Clear();
    return lines;
}

} // namespace tessary::recognizer
