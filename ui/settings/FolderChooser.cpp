#include "ui/settings/FolderChooser.h"

#include "ui/kit/Theme.h"

#include <QDir>
#include <QFileDialog>

namespace tessary {

void chooseFolder(const Theme& theme, QWidget& owner, const QString& title, const QString& start,
                  std::function<void(QString)> chosen)
{
    if (auto* open = owner.findChild<QFileDialog*>(QString(), Qt::FindDirectChildrenOnly)) {
        open->raise();
        open->activateWindow();
        return;
    }
    auto* dialog = new QFileDialog(&owner, title, start);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setPalette(theme.palette());
    QObject::connect(dialog, &QFileDialog::fileSelected, &owner,
                     [chosen = std::move(chosen)](const QString& path) {
                         if (!path.isEmpty())
                             chosen(QDir::cleanPath(path));
                     });
    dialog->open();
}

QString readablePath(const QString& path)
{
    const QString home = QDir::homePath();
    if (path == home)
        return QStringLiteral("~");
    return path.startsWith(home + u'/') ? u'~' + path.sliced(home.size()) : path;
}

} // namespace tessary
