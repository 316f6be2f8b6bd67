#pragma once

#include "base/Error.h"
#include "platform/testing/FakeWindowEffects.h"
#include "recognition/LocalOCRResultView.h"
#include "recognition/LocalOCRResultWindowController.h"
#include "recognition/OCRReminderClassifier.h"
#include "recognition/OCRStatusRow.h"
#include "recognition/RecognizedTextEdit.h"
#include "tests/support/Await.h"
#include "ui/kit/FramedWindow.h"
#include "ui/kit/PushButton.h"
#include "ui/kit/Theme.h"

#include <QPromise>

#include <qcoro/qcorofuture.h>

#include <gtest/gtest.h>

namespace tessary::testing {

using namespace Qt::StringLiterals;

class RefusedError : public ::tessary::Error {
public:
    [[nodiscard]] QString localizedDescription() const override { return u"未获得“提醒事项”访问权限"_s; }
};

/// Reminders that are made when the test says so; it outlives the windows.
struct ReminderDesk {
    QList<OCRReminderDraft> drafts; ///< What was asked for.
    QList<QString> copied;
    bool refuses = false;
    bool waits = false;
    int resumed = 0; ///< Creations that waited and went on.
    std::shared_ptr<QPromise<void>> pending;

    /// Lets a creation that waits go on.
    void answer()
    {
        pending->finish();
        pending.reset();
    }
};

/// The window with a fake desktop around it.
class ResultWindowFixture : public ::testing::Test {
protected:
    ResultWindowFixture() { theme.setReducedMotion(true); }

    RecognitionResult result(const QString& text, OCRReminderStatus status = {},
                             QImage image = QImage(200, 100, QImage::Format_RGB32))
    {
        RecognitionResult made;
        made.text = text;
        image.fill(Qt::darkCyan);
        made.image = image;
        made.status = std::move(status);
        made.createReminder = [this](OCRReminderDraft draft) { return create(&desk, std::move(draft)); };
        made.copyText = [this](const QString& copied) { desk.copied.append(copied); };
        made.now = [] { return kNow; };
        return made;
    }
    RecognitionResult task(const QString& text)
    {
        return result(text, {OCRReminderStatus::Ready{*OCRReminderClassifier::draft(text, kNow)}});
    }
    void open(RecognitionResult shown) { controller.show(std::move(shown)); }

    [[nodiscard]] LocalOCRResultView& view() { return *controller.view(); }
    template <typename Widget>
    [[nodiscard]] Widget* named(const char* name)
    {
        return controller.window()->findChild<Widget*>(QString::fromLatin1(name));
    }
    [[nodiscard]] PushButton* addButton() { return named<PushButton>("addReminder"); }
    [[nodiscard]] RecognizedTextEdit* edit() { return named<RecognizedTextEdit>("recognizedText"); }
    [[nodiscard]] OCRStatusRow* status() { return named<OCRStatusRow>("status"); }

    static constexpr Date kNow{1'772'590'830.0};

    ReminderDesk desk;
    Theme theme;
    FakeWindowEffects effects;
    LocalOCRResultWindowController controller{theme, effects};

private:
    static QCoro::Task<> create(ReminderDesk* desk, OCRReminderDraft draft)
    {
        desk->drafts.append(draft);
        if (desk->waits) {
            desk->pending = std::make_shared<QPromise<void>>();
            desk->pending->start();
            QFuture<void> answered = desk->pending->future();
            co_await answered;
            ++desk->resumed;
        }
        if (desk->refuses)
            throw RefusedError();
    }
};

} // namespace tessary::testing
