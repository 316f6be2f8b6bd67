#pragma once

#include "tests/session/ChildProcess.h"
#include "tests/session/LibraryReader.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <memory>
#include <vector>

namespace tessary::testing {

/// Tessary as a person runs it, on a private desktop, with a library and settings of its own, while
/// other programs own the clipboard. It is asked to quit at the end of every test and must do so well.
class SessionTest : public ::testing::Test {
protected:
    SessionTest();
    void TearDown() override;

    /// Starts the program and waits until it watches the clipboard.
    void start();
    /// Starts it without waiting for anything; for what happens before or instead of watching.
    void launch();
    /// The same for a further start of the program, which ends by itself or with its object.
    [[nodiscard]] std::unique_ptr<ChildProcess> run(const QStringList& arguments = {});
    /// Starts are of this program from now on, such as of an installed one.
    void useProgram(const QString& path) { m_program = path; }
    /// Asks it to quit, as the end of a session does, and checks that it does.
    void quit();
    [[nodiscard]] ChildProcess& tessary() { return *m_tessary; }

    /// A program that takes the clipboard (see OwnerOptions) and serves until the test ends or `drop`.
    ChildProcess& own(const QStringList& arguments);
    /// The same for each offer, of the form TARGET=text:… or TARGET=file:….
    ChildProcess& offer(const QString& offer) { return own({QStringLiteral("--offer"), offer}); }
    ChildProcess& copyText(const QString& text);
    ChildProcess& copyPng(const QString& path) { return offer(QStringLiteral("image/png=file:") + path); }
    /// Owns the clipboard for longer than two looks of the monitor, then lets go of it. For contents that
    /// must not be kept: whoever looks at the clipboard has seen them.
    void ownForAWhile(const QStringList& arguments);
    /// A GTK program, with the arguments of gtk_client.py.
    ChildProcess& gtk(const QStringList& arguments);
    /// Any other program; not waited for.
    ChildProcess& program(const QString& name, const QStringList& arguments);

    [[nodiscard]] LibraryReader library() const { return LibraryReader(root()); }
    /// Waits until the library holds exactly so many items. Says what it holds when it does not.
    [[nodiscard]] ::testing::AssertionResult holds(int count);
    [[nodiscard]] ::testing::AssertionResult holdsText(const QString& text);
    /// Copies a text nobody else copies and waits until it is there: what was copied before has been dealt
    /// with by then.
    [[nodiscard]] ::testing::AssertionResult keepsCopying();

    [[nodiscard]] QString root() const { return m_folder.file(QStringLiteral("data/Tessary")); }
    [[nodiscard]] QString settingsPath() const;
    [[nodiscard]] QString scratch(const QString& name) const { return m_folder.file(name); }
    [[nodiscard]] QProcessEnvironment& environment() { return m_environment; }
    /// Writes the lines of the settings' one group.
    void writeSettings(const QStringList& lines) const;
    void writeFile(const QString& path, const QByteArray& bytes) const;
    [[nodiscard]] static QByteArray readFile(const QString& path);
    /// The files under the folder that hold the bytes anywhere.
    [[nodiscard]] static QStringList filesHolding(const QByteArray& bytes, const QString& folder);

private:
    TemporaryFolder m_folder;
    QProcessEnvironment m_environment;
    QString m_program{QStringLiteral(TESSARY_PROGRAM)};
    std::vector<std::unique_ptr<ChildProcess>> m_programs;
    std::unique_ptr<ChildProcess> m_tessary;
    int m_markers = 0;
};

} // namespace tessary::testing
