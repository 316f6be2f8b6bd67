#include "ui/kit/Menu.h"

#include "ui/kit/MenuStyle.h"
#include "ui/kit/RoundedMask.h"
#include "ui/kit/Theme.h"

#include <QIconEngine>
#include <QPainter>

namespace tessary {
namespace {

/// Carries a symbol's name to the style, which draws it in the colour of its row.
class NamedIconEngine : public QIconEngine {
public:
    explicit NamedIconEngine(QString name) : m_name(std::move(name)) {}

    void paint(QPainter*, const QRect&, QIcon::Mode, QIcon::State) override {}
    [[nodiscard]] QIconEngine* clone() const override { return new NamedIconEngine(m_name); }
    QString iconName() override { return m_name; }

private:
    QString m_name;
};

} // namespace

Menu::Menu(const Theme& theme, bool isTranslucent, QWidget* parent)
    : QMenu(parent),
      m_theme(theme),
      m_isTranslucent(isTranslucent)
{
    auto* style = new MenuStyle(theme);
    style->setParent(this);
    setStyle(style);
    applyTheme();
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
    setAttribute(Qt::WA_TranslucentBackground, isTranslucent);
    connect(&theme, &Theme::changed, this, &Menu::applyTheme);
    // Who chooses through a screen reader leaves it open.
    connect(this, &QMenu::triggered, this, [this] {
        if (isVisible())
            close();
    });
}

void Menu::applyTheme()
{
    const QFont font = m_theme.font(Theme::kBodySize);
    const bool isOtherSize = this->font().pixelSize() != font.pixelSize();
    setFont(font);
    setPalette(m_theme.palette());
    if (isVisible() && isOtherSize)
        popup(pos()); // measures its rows anew, and scrolls where they are too many
    update();
}

QAction* Menu::add(const QString& symbol, const QString& text)
{
    QAction* action = addAction(text);
    if (!symbol.isEmpty())
        action->setIcon(QIcon(new NamedIconEngine(symbol)));
    return action;
}

void Menu::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(m_isTranslucent ? m_theme.colours().edge : m_theme.colours().solidEdge);
        painter.setBrush(m_theme.colours().surface);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::kMenuRadius,
                                Theme::kMenuRadius);
    }
    QMenu::paintEvent(event);
}

void Menu::resizeEvent(QResizeEvent* event)
{
    QMenu::resizeEvent(event);
    if (!m_isTranslucent)
        setMask(roundedMask(size(), Theme::kMenuRadius));
}

} // namespace tessary
