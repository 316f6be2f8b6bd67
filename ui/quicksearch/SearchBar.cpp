#include "ui/quicksearch/SearchBar.h"

#include "ui/kit/Symbol.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/SearchField.h"

#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kHeight = 60;
constexpr int kLensLeft = 26;
constexpr int kLensSize = 20;
constexpr int kLargestLens = 32; // its column is no wider
constexpr int kFieldLeft = 68;
constexpr int kFieldHeight = 36;
constexpr int kLineHeight = 28;
constexpr int kRight = 14;
constexpr int kGap = 4;

} // namespace

SearchBar::SearchBar(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_field(new SearchField(theme, this)),
      m_filter(new SymbolButton(theme, QStringLiteral("line.3.horizontal.decrease"), this)),
      m_pin(new SymbolButton(theme, QStringLiteral("pin"), this)),
      m_settings(new SymbolButton(theme, QStringLiteral("gearshape"), this))
{
    m_filter->setText(tr("过滤"));
    m_filter->setShowsText(true);
    m_filter->setOpensMenu();
    m_filter->setTrailingSymbol(QStringLiteral("chevron.down"));
    m_pin->setCheckable(true);
    m_pin->setCheckedSymbol(QStringLiteral("pin.fill"));
    m_settings->setAccessibleName(tr("设置"));
    m_settings->setToolTip(tr("设置"));
    setPinned(false);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kFieldLeft, 0, kRight, 0);
    layout->setSpacing(kGap);
    layout->addWidget(m_field, 1);
    layout->addSpacing(kGap);
    layout->addWidget(m_filter);
    layout->addWidget(m_pin);
    layout->addWidget(m_settings);
    connect(&theme, &Theme::changed, this, &SearchBar::applyTheme);
    applyTheme();
    connect(m_filter, &QAbstractButton::clicked, this, &SearchBar::filterRequested);
    connect(m_pin, &QAbstractButton::clicked, this, &SearchBar::pinToggled);
    connect(m_settings, &QAbstractButton::clicked, this, &SearchBar::settingsRequested);
}

void SearchBar::applyTheme()
{
    setFixedHeight(m_theme.fitting(kHeight, kLineHeight));
    m_field->setFixedHeight(m_theme.fitting(kFieldHeight, kLineHeight));
    update();
}

void SearchBar::setPinned(bool isPinned)
{
    m_pin->setChecked(isPinned);
    const QString help = isPinned ? tr("取消固定窗口") : tr("置顶");
    m_pin->setText(tr("置顶"));
    m_pin->setAccessibleName(tr("置顶"));
    m_pin->setAccessibleDescription(isPinned ? help : QString());
    m_pin->setToolTip(help);
}

void SearchBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const int size = std::min(m_theme.scaled(kLensSize), kLargestLens);
    painter.drawPixmap(kLensLeft + (kLensSize - size) / 2, (height() - size) / 2,
                       Symbol(QStringLiteral("magnifyingglass"))
                           .pixmap(size, m_theme.colours().secondaryText, devicePixelRatioF()));
}

} // namespace tessary
