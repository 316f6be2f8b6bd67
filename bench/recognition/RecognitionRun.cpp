#include "bench/recognition/RecognitionRun.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace tessary::bench {
namespace {

constexpr double kNanosecondsAMillisecond = 1e6;

struct Reading {
    PictureEntry entry;
    QString level;
    QString text;
    CharacterErrors errors;
};

QString joined(const QList<TextObservation>& lines)
{
    QStringList texts;
    for (const TextObservation& line : lines)
        if (!line.candidates.isEmpty())
            texts.append(line.candidates.first());
    return texts.join(u'\n');
}

TextRecognitionRequest request(const QString& level)
{
    TextRecognitionRequest made;
    made.level = level == QLatin1String("fast") ? RecognitionLevel::Fast : RecognitionLevel::Accurate;
    made.languages = {QStringLiteral("zh-Hans"), QStringLiteral("zh-Hant"), QStringLiteral("en-US"),
                      QStringLiteral("ja-JP")};
    return made;
}

struct Answer {
    QString text;
    double milliseconds = 0;
    bool failed = false;
};

/// A failure is as good as reading nothing, and the next picture may go better.
QCoro::Task<Answer> ask(TextRecognizer* recognizer, QString level, QImage picture)
{
    QElapsedTimer timer;
    timer.start();
    Answer answer;
    try {
        const QList<TextObservation> lines = co_await recognizer->perform(request(level), picture);
        answer.text = joined(lines);
    } catch (const TextRecognitionError& error) {
        std::fprintf(stderr, "%s: %s\n", qUtf8Printable(error.localizedDescription()),
                     qUtf8Printable(error.detail()));
        answer.failed = true;
    }
    answer.milliseconds = static_cast<double>(timer.nsecsElapsed()) / kNanosecondsAMillisecond;
    co_return answer;
}

QList<PictureEntry> chosen(const RunOptions& options)
{
    QList<PictureEntry> entries;
    for (const PictureEntry& entry : readPictureSet(options.folder))
        if ((options.half.isEmpty() || entry.half == options.half) &&
            (options.group.isEmpty() || entry.group == options.group))
            entries.append(entry);
    if (entries.isEmpty())
        throw std::runtime_error("no picture is of that half and group");
    return entries;
}

QImage load(const RunOptions& options, const PictureEntry& entry)
{
    const QImage picture(options.folder + u'/' + entry.file);
    if (picture.isNull())
        throw std::runtime_error("cannot read " + entry.file.toStdString());
    return picture;
}

void show(QList<Reading> readings, int count)
{
    std::stable_sort(readings.begin(), readings.end(), [](const Reading& one, const Reading& other) {
        return one.errors.distance > other.errors.distance;
    });
    for (const Reading& reading : readings.mid(0, count))
        std::printf("== %s %s %s: %lld errors in %lld\n-- drawn\n%s\n-- read\n%s\n",
                    qUtf8Printable(reading.level), qUtf8Printable(reading.entry.file),
                    qUtf8Printable(reading.entry.detail), static_cast<long long>(reading.errors.distance),
                    static_cast<long long>(reading.errors.length), qUtf8Printable(reading.entry.truth),
                    qUtf8Printable(reading.text));
}

} // namespace

QCoro::Task<RecognitionTable> runRecognition(TextRecognizer* recognizer, RunOptions options)
{
    const QList<PictureEntry> entries = chosen(options);
    const QStringList levels = options.level.isEmpty()
                                   ? QStringList{QStringLiteral("accurate"), QStringLiteral("fast")}
                                   : QStringList{options.level};
    RecognitionTable table;
    QList<Reading> readings;
    for (const QString& level : levels) {
        const QImage first = load(options, entries.first());
        co_await ask(recognizer, level, first);
        for (const PictureEntry& entry : entries) {
            const QImage picture = load(options, entry);
            const Answer answer = co_await ask(recognizer, level, picture);
            if (answer.failed)
                std::printf("failed: %s %s\n", qUtf8Printable(level), qUtf8Printable(entry.file));
            const CharacterErrors errors = characterErrors(entry.truth, answer.text);
            table.add({entry.half, entry.group, level, errors,
                       characterErrors(entry.truth, answer.text, Widths::ToldApart), answer.milliseconds});
            readings.append({entry, level, answer.text, errors});
        }
    }
    show(readings, options.readings);
    co_return table;
}

} // namespace tessary::bench
