#pragma once

#include <QByteArray>
#include <QJsonObject>

namespace tessary {

/// How items and facts are printed. All results are UTF-8, and without characters that a terminal would obey.
namespace ItemLines {

/// One line, with its end: id, local time of capture, image or text, application, title, with tabs between.
[[nodiscard]] QByteArray line(const QJsonObject& item);
/// The text on one line: white space and control characters are blanks.
[[nodiscard]] QString flat(const QString& text);
/// A line for each fact, with its end: name, tab, value. Lists are joined with blanks.
[[nodiscard]] QByteArray facts(const QVariantMap& facts);
/// The same as one JSON object, with its end.
[[nodiscard]] QByteArray json(const QVariantMap& facts);

} // namespace ItemLines

} // namespace tessary
