// qt_text_field TITLE: a window with one text field, by Qt. Prints "text:" and what the field holds whenever
// that changes.
#include <QApplication>
#include <QLineEdit>

#include <iostream>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QLineEdit field;
    field.setWindowTitle(QApplication::arguments().value(1));
    field.resize(320, 60);
    QObject::connect(&field, &QLineEdit::textChanged,
                     [](const QString& text) { std::cout << "text:" << text.toStdString() << std::endl; });
    field.show();
    return QApplication::exec();
}
