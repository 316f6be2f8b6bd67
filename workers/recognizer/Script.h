#pragma once

#include <QList>
#include <QStringList>

namespace tessary::recognizer {

/// The ways of writing that there are models for.
enum class Script { Simplified, Traditional, Latin, Japanese };

/// The scripts of the language tags in their order, each once; unknown tags are passed over.
[[nodiscard]] QList<Script> scriptsOf(const QStringList& languageTags);

/// The engine's name of a script's model.
[[nodiscard]] const char* modelOf(Script script);

/// The Debian package with a script's model.
[[nodiscard]] QString packageOf(Script script);

} // namespace tessary::recognizer
