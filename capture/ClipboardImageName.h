#pragma once

#include <QDateTime>
#include <QString>

namespace tessary {

/// The name of a copied picture's temporary file, which its item keeps: "剪贴板图片 2026-03-05 09.07.03.png".
[[nodiscard]] QString clipboardImageName(const QDateTime& time);
/// The name under which the n-th picture of the same second lies on disk meanwhile; `n` from 2.
[[nodiscard]] QString numberedImageName(const QString& name, int n);
/// The name that a file name of either kind stands for; empty for any other file name.
[[nodiscard]] QString nominalImageName(const QString& fileName);

} // namespace tessary
