#pragma once

#include "platform/ApplicationIcons.h"
#include "platform/testing/NextTurn.h"

#include <QColor>
#include <QHash>
#include <QList>

namespace tessary::testing {

/// Icons of one colour each. Answers come after a turn of the event loop.
class FakeApplicationIcons : public ApplicationIcons {
public:
    [[nodiscard]] QCoro::Task<QImage> icon(QUrl bundleURL, int pixelSize) override
    {
        m_asked.append(bundleURL);
        QImage image;
        if (const auto color = m_colors.constFind(bundleURL); color != m_colors.constEnd()) {
            image = QImage(pixelSize, pixelSize, QImage::Format_ARGB32_Premultiplied);
            image.fill(*color);
        }
        co_await NextTurn();
        co_return image;
    }

    void add(const QUrl& bundleURL, const QColor& color) { m_colors.insert(bundleURL, color); }
    /// What was asked for, in order.
    [[nodiscard]] const QList<QUrl>& asked() const { return m_asked; }

private:
    QHash<QUrl, QColor> m_colors;
    QList<QUrl> m_asked;
};

} // namespace tessary::testing
