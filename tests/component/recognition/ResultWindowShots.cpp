#include "platform/testing/FakeWindowEffects.h"
#include "recognition/LocalOCRResultView.h"
#include "recognition/LocalOCRResultWindowController.h"
#include "recognition/OCRReminderClassifier.h"
#include "ui/kit/FramedWindow.h"
#include "ui/kit/Theme.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QTimer>

#include <functional>
#include <vector>

/// result_window_shots FOLDER: pictures of the result window in its states, light and dark, for a person to
/// look at. The scale is QT_SCALE_FACTOR.
namespace tessary {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr Date kNow{1'772'590'830.0};

struct Shot {
    QString name;
    RecognitionResult result;
    QSize size = LocalOCRResultWindowController::kSmallest;
};

QImage note(const QString& text, QSize size, qreal ratio)
{
    QImage image(size * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(QColor(u"#fff6dc"_s));
    QPainter painter(&image);
    painter.setPen(Qt::black);
    painter.drawText(QRect(QPoint(), size).adjusted(12, 8, -8, -8), Qt::AlignLeft | Qt::TextWordWrap, text);
    return image;
}

RecognitionResult result(const QString& text, OCRReminderStatus status, QImage image)
{
    RecognitionResult made;
    made.text = text;
    made.image = std::move(image);
    made.status = std::move(status);
    made.createReminder = [](OCRReminderDraft) -> QCoro::Task<> { co_return; };
    made.copyText = [](const QString&) {};
    made.now = [] { return kNow; };
    return made;
}

std::vector<Shot> shots(qreal ratio)
{
    const QString task = u"待办：周五 15:00 前提交报销单\n1. 打印行程单与发票（Hotel Astoria, 2 晚）\n"
                         "2. 填写出差编号 TR-2026-1187\n3. 交给财务 李敏，三楼 302 室"_s;
    const QImage image = note(task, {224, 104}, ratio);
    const QString chinese = u"这是一段没有空格的很长的中文文字用来看换行是否正确"_s.repeated(40);
    const QString english =
        u"The quick\tbrown fox jumps over the lazy dog. "_s.repeated(30) + u"x"_s.repeated(400);
    const OCRReminderStatus ready{OCRReminderStatus::Ready{*OCRReminderClassifier::draft(task, kNow)}};
    const OCRReminderStatus failed{OCRReminderStatus::Failed{
        u"未获得“提醒事项”访问权限，并且这个说明很长，长到在一行里怎么也放不下，只好省略"_s}};
    return {
        {u"ready"_s, result(task, ready, image)},
        {u"created"_s, result(task, {OCRReminderStatus::Created{}}, image)},
        {u"failed"_s, result(task, failed, image)},
        {u"plain"_s, result(u"春天的花园"_s, {}, note(u"·"_s, {16, 16}, 1))},
        {u"chinese"_s, result(chinese, {}, note(chinese, {8000, 200}, 1))},
        {u"english"_s, result(english, {}, note(english, {500, 700}, ratio)),
         LocalOCRResultWindowController::kLargest},
    };
}

/// Shows one after another and keeps what it looks like.
class Photographer : public QObject {
public:
    Photographer(Theme& theme, QString folder)
        : m_folder(std::move(folder)),
          m_theme(theme),
          m_controller(theme, m_effects),
          m_shots(shots(qApp->devicePixelRatio()))
    {
    }

    void next()
    {
        if (m_index == m_shots.size() * 2)
            return QCoreApplication::quit();
        m_theme.setDark(m_index >= m_shots.size());
        const Shot& shot = m_shots.at(m_index % m_shots.size());
        m_effects.setComposited(m_index % 3 != 2);
        m_controller.show(shot.result);
        FramedWindow& window = *m_controller.window();
        window.resize(shot.size + 2 * QSize(window.margin(), window.margin()));
        constexpr auto kSettled = 900ms; // for a person's eyes, not for a test
        QTimer::singleShot(kSettled, this, [this] { keep(); });
    }

private:
    void keep()
    {
        const Shot& shot = m_shots.at(m_index % m_shots.size());
        m_controller.window()->grab().save(m_folder + u'/' + shot.name +
                                           (m_theme.isDark() ? u"-dark"_s : u"-light"_s) +
                                           u"-%1x.png"_s.arg(qRound(qApp->devicePixelRatio())));
        ++m_index;
        next();
    }

    QString m_folder;
    Theme& m_theme;
    testing::FakeWindowEffects m_effects;
    LocalOCRResultWindowController m_controller;
    std::vector<Shot> m_shots;
    size_t m_index = 0;
};

} // namespace
} // namespace tessary

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1])))
        return 64;
    tessary::Theme theme;
    tessary::Photographer photographer(theme, QString::fromLocal8Bit(argv[1]));
    QTimer::singleShot(0, &photographer, [&] { photographer.next(); });
    return QApplication::exec();
}
