#pragma once

#include "bench/recognition/Look.h"
#include "bench/recognition/SourceTexts.h"

#include <QImage>
#include <QString>

namespace tessary::bench {

/// A picture and what is written on it, line by line from the top.
struct Page {
    QImage image;
    QString truth;
};

/// Running text: a few lines of a document, an article with a title, a quotation.
enum class Mixture { OneScript, WithLatin };
[[nodiscard]] Page textPage(Dice& dice, Half half, const QString& script, Mixture mixture,
                            SourceTexts& texts);

/// Names of the scenes that `scenePage` knows.
[[nodiscard]] QStringList sceneNames();
/// A piece of a program's window: toolbar, menu, code, chat, table, dialog, terminal, settings, notice.
[[nodiscard]] Page scenePage(const QString& scene, Dice& dice, Half half, const QString& script,
                             SourceTexts& texts);

} // namespace tessary::bench
