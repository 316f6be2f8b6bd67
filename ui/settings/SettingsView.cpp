#include "ui/settings/SettingsView.h"

#include "app/AppRuntime.h"
#include "ui/kit/Banner.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/SegmentedControl.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"
#include "ui/settings/GeneralSettingsTab.h"
#include "ui/settings/OCRSettingsTab.h"
#include "ui/settings/PrivacySettingsTab.h"
#include "ui/settings/StorageSettingsTab.h"

#include <QHBoxLayout>
#include <QHideEvent>
#include <QScrollBar>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kHeaderHeight = 64;
constexpr int kHeaderMargin = 16;
constexpr int kWindowButtonGap = 4;

} // namespace

SettingsView::SettingsView(const Theme& theme, AppRuntime& runtime, WindowEffects& effects,
                           const ApplicationSources& sources, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_runtime(runtime),
      m_header(new QWidget),
      m_tabs(new SegmentedControl(theme, m_header)),
      m_windowButtons(new QWidget(m_header)),
      m_hairline(new Hairline(theme, Qt::Horizontal)),
      m_banner(new Banner(theme, QStringLiteral("exclamationmark.triangle.fill"))),
      m_pages(new QStackedWidget),
      m_general(new GeneralSettingsTab(theme, runtime, effects)),
      m_privacy(new PrivacySettingsTab(theme, runtime, sources))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_header);
    column->addWidget(m_hairline);
    column->addWidget(m_banner);
    column->addWidget(m_pages, 1);
    addHeader();
    addPages();
    followErrors();
    connect(&theme, &Theme::changed, this, &SettingsView::layOut);
}

void SettingsView::addHeader()
{
    m_tabs->setAccessibleName(tr("设置"));
    m_tabs->addSegment(QStringLiteral("gearshape"), tr("通用"));
    m_tabs->addSegment(QStringLiteral("internaldrive"), tr("存储"));
    m_tabs->addSegment(QStringLiteral("text.viewfinder"), tr("OCR"));
    m_tabs->addSegment(QStringLiteral("lock"), tr("隐私"));
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int index) {
        m_general->stopRecording();
        m_pages->setCurrentIndex(index);
        showScrolled();
    });
    addWindowButtons();
    // The line takes its room at any time, so that nothing moves.
    QSizePolicy keeps = m_hairline->sizePolicy();
    keeps.setRetainSizeWhenHidden(true);
    m_hairline->setSizePolicy(keeps);
    layOut();
}

void SettingsView::addWindowButtons()
{
    auto* line = new QHBoxLayout(m_windowButtons);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(kWindowButtonGap);
    const auto add = [&](const char* symbol, const QString& name) {
        auto* button = new SymbolButton(m_theme, QLatin1String(symbol));
        button->setToolTip(name);
        button->setAccessibleName(name);
        line->addWidget(button);
        return button;
    };
    connect(add("minus", tr("最小化")), &QAbstractButton::clicked, this, &SettingsView::minimizeRequested);
    connect(add("xmark", tr("关闭")), &QAbstractButton::clicked, this, &SettingsView::closeRequested);
}

/// The tabs are in the middle of the window, and beside the buttons where there is less room.
void SettingsView::layOut()
{
    const QSize tabs = m_tabs->sizeHint();
    m_header->setFixedHeight(std::max(kHeaderHeight, tabs.height() + 2 * kHeaderMargin));
    const int height = m_header->height();
    const QSize buttons = m_windowButtons->sizeHint();
    const int buttonsLeft = width() - kHeaderMargin - buttons.width();
    const int left = std::min((width() - tabs.width()) / 2, buttonsLeft - kHeaderMargin - tabs.width());
    m_tabs->setGeometry(QRect(QPoint(std::max(0, left), (height - tabs.height()) / 2), tabs));
    m_windowButtons->setGeometry(QRect(QPoint(buttonsLeft, (height - buttons.height()) / 2), buttons));
}

void SettingsView::addPages()
{
    addPage(m_general);
    addPage(new StorageSettingsTab(m_theme, m_runtime));
    addPage(new OCRSettingsTab(m_theme, m_runtime));
    addPage(m_privacy);
    connect(m_privacy, &PrivacySettingsTab::clearAllDataRequested, this,
            [this] { setConfirmClearAllData(true); });
    connect(m_privacy, &PrivacySettingsTab::pickingBegan, this, &SettingsView::pickingBegan);
    connect(m_privacy, &PrivacySettingsTab::pickingEnded, this, &SettingsView::pickingEnded);
    showScrolled();
    m_tabs->setFocus(Qt::OtherFocusReason);
}

void SettingsView::addPage(SettingsPage* page)
{
    page->setAccessibleName(m_tabs->tabText(m_pages->count()));
    m_pages->addWidget(page);
    connect(page->verticalScrollBar(), &QAbstractSlider::valueChanged, this, &SettingsView::showScrolled);
}

void SettingsView::showScrolled()
{
    m_hairline->setVisible(page(selectedTab()).verticalScrollBar()->value() > 0);
}

/// Those that come while the window is there; the panel tells of others.
void SettingsView::followErrors()
{
    connect(&m_runtime, &AppRuntime::lastErrorChanged, this, [this] {
        if (isVisible() || !m_runtime.lastError())
            m_banner->setMessage(m_runtime.lastError().value_or(QString()));
    });
    connect(m_banner, &Banner::closed, &m_runtime, &AppRuntime::clearLastError);
}

SettingsTab SettingsView::selectedTab() const
{
    return static_cast<SettingsTab>(m_tabs->currentIndex());
}

void SettingsView::selectTab(SettingsTab tab)
{
    m_tabs->setCurrentIndex(static_cast<int>(tab));
}

void SettingsView::selectNextTab(int step)
{
    const int count = m_tabs->count();
    m_tabs->setCurrentIndex((m_tabs->currentIndex() + step + count) % count);
}

SettingsPage& SettingsView::page(SettingsTab tab) const
{
    return *static_cast<SettingsPage*>(m_pages->widget(static_cast<int>(tab)));
}

std::optional<GlobalHotKeyService::HotKey> SettingsView::recordingHotKey() const
{
    return m_general->recordingHotKey();
}

void SettingsView::setConfirmClearAllData(bool confirms)
{
    if (confirms == confirmClearAllData())
        return;
    if (!confirms) {
        m_confirmation->dismiss();
        m_confirmation = nullptr;
        return;
    }
    const auto clear = [this] { m_runtime.perform(m_runtime.clearAllData()); };
    Sheet::Question question;
    question.symbol = QStringLiteral("exclamationmark.triangle");
    question.title = tr("永久清空 Tessary 的全部剪贴板内容与元数据？");
    question.text = tr("此操作无法撤销，文字、图片、缩略图、标签和历史记录都会被删除。");
    question.choices = {{tr("清空全部数据"), PushButton::Role::Destructive, clear},
                        {tr("取消"), PushButton::Role::Default, {}}};
    question.escape = 1;
    QWidget* before = window()->focusWidget();
    m_confirmation = Sheet::ask(m_theme, *this, std::move(question), kCornerRadius);
    connect(m_confirmation, &Sheet::closed, this, [this, focused = QPointer<QWidget>(before)] {
        m_confirmation = nullptr;
        if (focused && isVisible())
            focused->setFocus(Qt::OtherFocusReason);
    });
}

/// What was being done is not waiting when the window comes back.
void SettingsView::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (event->spontaneous())
        return;
    m_general->stopRecording();
    m_privacy->dismissChooser();
    setConfirmClearAllData(false);
}

void SettingsView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layOut();
}

} // namespace tessary
