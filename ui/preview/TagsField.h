#pragma once

#include <QLineEdit>
#include <QList>
#include <QWidget>

namespace tessary {

class TagChip;
class Theme;

/// Tags as chips, and a line to type more. A comma, Chinese or not, the return key or leaving the field makes
/// a chip of what is typed; backspace at its start takes the last chip away.
class TagsField : public QWidget {
    Q_OBJECT
public:
    explicit TagsField(const Theme& theme, QWidget* parent = nullptr);

    /// All tags, the one being typed as well, as text.
    [[nodiscard]] QString text() const;
    /// Replaces all of it.
    void setText(const QString& text);
    void setReadOnly(bool isReadOnly);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void edited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    struct Placed {
        QList<QRect> chips;
        QRect edit;
        int height = 0;
    };

    void applyTheme();
    void typed(const QString& text);
    void commit();
    void addChip(const QString& tag);
    void removeChip(TagChip* chip);
    void chipsChanged();
    [[nodiscard]] QStringList tags() const;
    [[nodiscard]] Placed placed(int width) const;
    void layOut();

    const Theme& m_theme;
    QList<TagChip*> m_chips;
    QLineEdit* m_edit;
};

} // namespace tessary
