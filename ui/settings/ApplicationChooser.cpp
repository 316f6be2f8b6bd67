#include "ui/settings/ApplicationChooser.h"

#include "ui/kit/PushButton.h"
#include "ui/kit/TextField.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemedLabel.h"
#include "ui/settings/ApplicationList.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include <qcoro/qcorotask.h>

#include <algorithm>
#include <array>

namespace tessary {
namespace {

constexpr int kWidth = 440;
constexpr int kHeight = 440;
constexpr int kMargin = 24; // to the window's edges, at least
constexpr int kRadius = 16;
constexpr int kHostRadius = 18;
constexpr int kPadding = 20;
constexpr int kGap = 12;
constexpr int kRing = 3;      // that buttons reach beyond their faces
constexpr int kButtonGap = 2; // and twice the ring
constexpr double kDim = 0.32;
const ThemedLabel::Look kTitle{Theme::kTitleSize, QFont::DemiBold, &ThemeColours::text, 22};
const ThemedLabel::Look kNothing{Theme::kBodySize, QFont::Normal, &ThemeColours::secondaryText, 20};

} // namespace

ApplicationChooser::ApplicationChooser(const Theme& theme, const ApplicationSources& sources,
                                       const QStringList& hidden, QWidget& host)
    : QWidget(&host),
      m_theme(theme),
      m_sources(sources),
      m_card(new QWidget(this)),
      m_title(new ThemedLabel(theme, kTitle, tr("选择要排除的 App"))),
      m_search(new TextField(theme)),
      m_list(new ApplicationList(theme, sources.icons)),
      m_nothing(new ThemedLabel(theme, kNothing)),
      m_pick(new PushButton(theme, PushButton::Role::Ordinary)),
      m_cancel(new PushButton(theme, PushButton::Role::Ordinary)),
      m_add(new PushButton(theme, PushButton::Role::Default))
{
    addParts();
    setAccessibleName(m_title->text());
    host.installEventFilter(this);
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_list->narrow(text);
        showState();
    });
    connect(m_list, &QListWidget::itemDoubleClicked, this, &ApplicationChooser::accept);
    connect(m_list, &QListWidget::currentRowChanged, this, &ApplicationChooser::showState);
    connect(m_add, &QAbstractButton::clicked, this, &ApplicationChooser::accept);
    connect(m_cancel, &QAbstractButton::clicked, this, &ApplicationChooser::dismiss);
    connect(m_pick, &QAbstractButton::clicked, this, [this] {
        dismiss();
        Q_EMIT windowRequested();
    });
    connect(&theme, &Theme::changed, this, &ApplicationChooser::layOut);
    layOut();
    show();
    raise();
    m_search->setFocus(Qt::OtherFocusReason);
    load(hidden);
}

void ApplicationChooser::addParts()
{
    m_search->setPlaceholderText(tr("搜索 App"));
    m_search->setAccessibleName(tr("搜索 App"));
    m_search->setSymbol(QStringLiteral("magnifyingglass"));
    m_nothing->setAlignment(Qt::AlignCenter);
    m_pick->setText(tr("选取屏幕上的窗口..."));
    m_cancel->setText(tr("取消"));
    m_add->setText(tr("添加"));
    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(kButtonGap);
    buttons->addWidget(m_pick);
    buttons->addStretch(1);
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_add);
    auto* column = new QVBoxLayout(m_card);
    column->setContentsMargins(kPadding - kRing, kPadding, kPadding - kRing, kPadding - kRing);
    column->setSpacing(kGap);
    auto* parts = new QVBoxLayout;
    parts->setContentsMargins(kRing, 0, kRing, 0);
    parts->setSpacing(kGap);
    parts->addWidget(m_title);
    parts->addWidget(m_search);
    parts->addWidget(m_list, 1);
    parts->addWidget(m_nothing, 1);
    column->addLayout(parts, 1);
    column->addLayout(buttons);
    showState();
}

void ApplicationChooser::load(const QStringList& hidden)
{
    QCoro::connect(m_sources.installed.all(), this, [this, hidden](QList<InstalledApplication> found) {
        const auto isHidden = [&hidden](const InstalledApplication& one) {
            return hidden.contains(one.bundleIdentifier);
        };
        found.erase(std::remove_if(found.begin(), found.end(), isHidden), found.end());
        m_isLoaded = true;
        m_list->setApplications(found);
        m_list->narrow(m_search->text());
        showState();
    });
}

void ApplicationChooser::showState()
{
    const bool isEmpty = m_list->shownCount() == 0;
    m_list->setVisible(!isEmpty);
    m_nothing->setVisible(isEmpty);
    m_nothing->setText(m_isLoaded ? tr("没有匹配的 App") : QString());
    m_add->setEnabled(m_list->selected().has_value());
}

void ApplicationChooser::accept()
{
    const std::optional<InstalledApplication> application = m_list->selected();
    if (!application)
        return;
    dismiss();
    Q_EMIT chosen(*application);
}

void ApplicationChooser::dismiss()
{
    hide();
    deleteLater();
}

void ApplicationChooser::layOut()
{
    setGeometry(parentWidget()->rect());
    const QSize room = size() - QSize(2 * kMargin, 2 * kMargin);
    const QSize wanted = QSize(m_theme.scaled(kWidth), m_theme.scaled(kHeight)).boundedTo(room);
    m_card->setGeometry(
        QRect(QPoint((width() - wanted.width()) / 2, (height() - wanted.height()) / 2), wanted));
    update();
}

bool ApplicationChooser::handleKey(int key)
{
    switch (key) {
    case Qt::Key_Escape:
        dismiss();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_cancel->hasFocus())
            dismiss();
        else if (m_pick->hasFocus())
            m_pick->click();
        else
            accept();
        return true;
    default:
        return false;
    }
}

/// Nothing of this reaches the window beneath.
bool ApplicationChooser::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        event->accept();
        return true;
    case QEvent::KeyPress:
        event->setAccepted(true);
        if (handleKey(static_cast<QKeyEvent*>(event)->key()))
            return true;
        break;
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
        event->accept();
        return true;
    default:
        break;
    }
    return QWidget::event(event);
}

bool ApplicationChooser::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        layOut();
    if (watched == parentWidget() && event->type() == QEvent::Hide)
        dismiss();
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            m_list->moveSelection(key == Qt::Key_Up ? -1 : 1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

/// The focus stays in the card.
bool ApplicationChooser::focusNextPrevChild(bool next)
{
    const std::array<QWidget*, 5> chain{m_search, m_list, m_pick, m_cancel, m_add};
    const auto size = static_cast<int>(chain.size());
    int place = 0;
    for (int i = 0; i < size; ++i)
        place = chain.at(static_cast<std::size_t>(i))->hasFocus() ? i : place;
    for (int step = 1; step <= size; ++step) {
        const int other = (place + (next ? step : size - step)) % size;
        QWidget* widget = chain.at(static_cast<std::size_t>(other));
        if (widget->isVisible() && widget->isEnabled()) {
            widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return true;
}

void ApplicationChooser::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(kDim)));
    painter.drawRoundedRect(rect(), kHostRadius, kHostRadius);
    painter.setPen(m_theme.colours().edge);
    painter.setBrush(m_theme.colours().window);
    painter.drawRoundedRect(QRectF(m_card->geometry()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

} // namespace tessary
