#include "bench/recognition/Pages.h"
#include "bench/recognition/PictureSet.h"

#include <QDir>
#include <QFontInfo>
#include <QGuiApplication>
#include <QTemporaryFile>

#include <cstdio>
#include <stdexcept>

/// recognition_pictures TEXTS.json FOLDER: makes the pictures of the recognition benchmark from the texts
/// that `collect-texts` found, the same every time with the same fonts.
namespace tessary::bench {
namespace {

constexpr int kPicturesPerScript = 14;
constexpr quint64 kSeed = 20260305;

const QStringList& scripts()
{
    static const QStringList kScripts{QStringLiteral("zh-Hans"), QStringLiteral("zh-Hant"),
                                      QStringLiteral("ja"), QStringLiteral("en")};
    return kScripts;
}

/// Fonts as they come, with light hinting, whatever the machine's settings.
void setUpFonts(QTemporaryFile& settings)
{
    if (!settings.open())
        throw std::runtime_error("cannot write font settings");
    settings.write("<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig>"
                   "<dir>/usr/share/fonts</dir><cachedir prefix=\"xdg\">fontconfig</cachedir>"
                   "<match target=\"pattern\">"
                   "<edit name=\"antialias\" mode=\"assign\"><bool>true</bool></edit>"
                   "<edit name=\"hintstyle\" mode=\"assign\"><const>hintslight</const></edit>"
                   "</match></fontconfig>");
    settings.flush();
    qputenv("FONTCONFIG_FILE", settings.fileName().toUtf8());
}

void requireFonts()
{
    for (const Half half : {Half::Tuning, Half::Reporting}) {
        Dice dice(kSeed);
        for (int turn = 0; turn < 200; ++turn) {
            const Look look = makeLook(dice, half, scripts().at(turn % scripts().size()),
                                       turn % 7 == 0 ? Face::Monospaced : Face::Proportional);
            for (const QString& family : look.font.families())
                if (QFontInfo(QFont(family)).family() != family)
                    throw std::runtime_error("no font " + family.toStdString() +
                                             "; tools/packages install recognition");
        }
    }
}

class SetWriter {
public:
    explicit SetWriter(QString folder) : m_folder(std::move(folder)) {}

    void add(const Page& page, PictureEntry entry)
    {
        entry.file = QStringLiteral("%1-%2-%3.png")
                         .arg(entry.half, entry.group)
                         .arg(m_entries.size(), 3, 10, QLatin1Char('0'));
        entry.truth = page.truth;
        if (!page.image.save(m_folder + u'/' + entry.file))
            throw std::runtime_error("cannot write into " + m_folder.toStdString());
        m_entries.append(entry);
    }
    void finish() const { writePictureSet(m_folder, m_entries); }

private:
    const QString m_folder;
    QList<PictureEntry> m_entries;
};

void makeHalf(Half half, const QString& textsPath, SetWriter& writer)
{
    const QString name = half == Half::Tuning ? QStringLiteral("tuning") : QStringLiteral("reporting");
    SourceTexts texts = SourceTexts::read(textsPath, name);
    Dice dice(half == Half::Tuning ? kSeed : ~kSeed);
    for (const QString& script : scripts())
        for (int picture = 0; picture < kPicturesPerScript; ++picture)
            writer.add(textPage(dice, half, script, Mixture::OneScript, texts), {{}, name, script, {}, {}});
    for (int picture = 0; picture < kPicturesPerScript; ++picture) {
        const QString& script = scripts().at(picture % 3); // not English
        writer.add(textPage(dice, half, script, Mixture::WithLatin, texts),
                   {{}, name, QStringLiteral("mixed"), script, {}});
    }
    for (const QString& scene : sceneNames())
        for (const QString& script : scripts())
            writer.add(scenePage(scene, dice, half, script, texts),
                       {{}, name, QStringLiteral("scenes"), scene + u' ' + script, {}});
}

int make(const QString& texts, const QString& folder)
{
    if (!QDir().mkpath(folder))
        throw std::runtime_error("cannot make " + folder.toStdString());
    for (const QString& old : QDir(folder).entryList({QStringLiteral("*.png"), QStringLiteral("set.json")}))
        QFile::remove(folder + u'/' + old);
    requireFonts();
    SetWriter writer(folder);
    makeHalf(Half::Tuning, texts, writer);
    makeHalf(Half::Reporting, texts, writer);
    writer.finish();
    return 0;
}

} // namespace
} // namespace tessary::bench

int main(int argc, char** argv)
{
    using namespace tessary::bench;
    try {
        QTemporaryFile fontSettings;
        setUpFonts(fontSettings);
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QGuiApplication application(argc, argv);
        const QStringList arguments = QCoreApplication::arguments();
        if (arguments.size() != 3) {
            std::fputs("usage: recognition_pictures TEXTS.json FOLDER\n", stderr);
            return 64;
        }
        return make(arguments.at(1), arguments.at(2));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "recognition_pictures: %s\n", error.what());
        return 1;
    }
}
