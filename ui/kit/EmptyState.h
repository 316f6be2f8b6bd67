#pragma once

#include <QWidget>

namespace tessary {

class Spinner;
class Theme;

/// What stands where there is nothing to list: a symbol or a spinner, a title, a sentence.
class EmptyState : public QWidget {
    Q_OBJECT
public:
    explicit EmptyState(const Theme& theme, QWidget* parent = nullptr);

    /// An empty symbol shows the spinner; title and sentence may be empty.
    void set(const QString& symbol, const QString& title, const QString& sentence);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Where the symbol starts, so that symbol and a two-line text are centred as one. Two states side by
    /// side thus have their symbols on one height.
    [[nodiscard]] int top() const;
    void placeSpinner();

    const Theme& m_theme;
    Spinner* m_spinner;
    QString m_symbol;
    QString m_title;
    QString m_sentence;
};

} // namespace tessary
