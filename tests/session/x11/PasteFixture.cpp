#include "tests/session/x11/PasteFixture.h"

namespace tessary::testing {

PasteFixture::~PasteFixture()
{
    setLayout({QStringLiteral("us"), QStringLiteral("-option"), QString()});
    m_targets.clear();
}

PasteTarget& PasteFixture::open(PasteTarget::Kind kind, const char* title)
{
    m_targets.push_back(std::make_unique<PasteTarget>(kind, QLatin1String(title), folder.path()));
    EXPECT_TRUE(isInFront(*m_targets.back())) << qPrintable(m_targets.back()->process().output());
    m_previous = workspace.frontmostApplication().value_or(RunningApplication{});
    return *m_targets.back();
}

PasteTarget& PasteFixture::openBehindAnother(PasteTarget::Kind kind)
{
    PasteTarget& target = open(kind, "target");
    const RunningApplication remembered = m_previous;
    open(PasteTarget::Kind::Gtk3, "panel");
    m_previous = remembered;
    return target;
}

bool PasteFixture::isInFront(PasteTarget& target)
{
    return eventually([&] {
        const auto front = workspace.frontmostApplication();
        return front && front->processIdentifier == target.process().processId() &&
               await(workspace.isActive(*front));
    });
}

Platform PasteFixture::platform(Clock& time)
{
    return {time,          *pasteboard,      workspace,  codec,       m_icons,
            m_defaults,    m_screenshotTool, m_folders,  m_hotKeys,   m_permissions,
            m_directories, m_fileManager,    keystrokes, m_loginItem, m_privacySettings,
            m_screens,     m_recognizer,     m_reminders};
}

ClipboardService::Outcome PasteFixture::paste(const QString& text)
{
    return await(ClipboardService::copyAndPaste(textRecord(text), m_previous, platform(clock)));
}

bool PasteFixture::arrives(PasteTarget& target, const QString& text)
{
    const bool came = eventually([&] { return target.text() == text; }, std::chrono::seconds(5));
    EXPECT_EQ(target.text(), text);
    return came;
}

void PasteFixture::setLayout(const QStringList& arguments)
{
    EXPECT_EQ(QProcess::execute(QStringLiteral("setxkbmap"), arguments), 0);
}

void PasteFixture::xdotool(const QStringList& arguments)
{
    EXPECT_EQ(QProcess::execute(QStringLiteral("xdotool"), arguments), 0);
}

} // namespace tessary::testing
