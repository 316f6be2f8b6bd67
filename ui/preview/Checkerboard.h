#pragma once

class QPainter;
class QRectF;

namespace tessary {

class Theme;

/// What is seen through transparent pictures: faint squares of eight pixels.
void paintCheckerboard(QPainter& painter, const Theme& theme, const QRectF& area);

} // namespace tessary
