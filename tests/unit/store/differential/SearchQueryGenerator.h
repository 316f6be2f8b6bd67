#pragma once

#include "search/ListRequest.h"
#include "store/PinyinText.h"
#include "store/ScreenshotRecord.h"
#include "tests/unit/store/differential/GeneratedTexts.h"

namespace tessary::testing {

/// Questions about a library whose texts it was shown: mostly about pieces of them.
class SearchQueryGenerator {
public:
    SearchQueryGenerator(Dice& dice, GeneratedTexts& texts, PinyinText& pinyin)
        : m_dice(dice),
          m_texts(texts),
          m_pinyin(pinyin)
    {
    }

    /// What the item says may be asked for from now on.
    void learn(const ScreenshotRecord& record);
    [[nodiscard]] ListRequest next();

private:
    [[nodiscard]] QString typed();
    [[nodiscard]] QString keyword();
    void lookAtAnother();
    [[nodiscard]] QString piece(const QString& text);
    [[nodiscard]] QString changed(QString keyword);
    [[nodiscard]] QString operatorText();
    [[nodiscard]] QString day();
    [[nodiscard]] QString inSomeCase(const QString& text);
    [[nodiscard]] QString separator();

    Dice& m_dice;
    GeneratedTexts& m_texts;
    PinyinText& m_pinyin;
    QList<QStringList> m_items; ///< What the columns of each say that are not empty, and its romanisation.
    QStringList m_columns;      ///< Of the item that the present question is about.
};

} // namespace tessary::testing
