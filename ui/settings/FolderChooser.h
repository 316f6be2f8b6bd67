#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace tessary {

class Theme;

/// Lets the person choose a folder, in the desktop's dialog; `chosen` is called when one was. Returns at
/// once; one dialog an owner.
void chooseFolder(const Theme& theme, QWidget& owner, const QString& title, const QString& start,
                  std::function<void(QString)> chosen);

/// The path as people read it: the home folder is a tilde.
[[nodiscard]] QString readablePath(const QString& path);

} // namespace tessary
