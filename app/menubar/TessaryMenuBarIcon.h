#pragma once

#include "platform/DesktopAppearance.h"

#include <QIcon>

namespace tessary {

/// The mark of the program in the panel: one colour, in the sizes that panels ask for.
class TessaryMenuBarIcon {
public:
    /// @param resource the drawing; a clipboard takes its place where it is missing.
    explicit TessaryMenuBarIcon(QString resource = QStringLiteral("Tessary_LOGO"));

    /// @param panel the colours of the panel that shows it.
    [[nodiscard]] QIcon image(DesktopAppearance::ColourScheme panel) const;
    /// The colour of text in such a panel; where that is not known, one that can be told from both.
    [[nodiscard]] static QColor colour(DesktopAppearance::ColourScheme panel);

private:
    QString m_drawing;
};

} // namespace tessary
