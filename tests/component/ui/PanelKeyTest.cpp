#include "ui/quicksearch/PanelKey.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

constexpr quint32 kPlaceOfC = 54; // on a US keyboard
constexpr quint32 kPlaceOfY = 29;

PanelKey pressed(int key, quint32 scanCode = 0, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return panelKey(QKeyEvent(QEvent::KeyPress, key, modifiers, scanCode, 0, 0));
}

TEST(PanelKeyTest, TheKeypadsEnterIsReturn)
{
    EXPECT_EQ(pressed(Qt::Key_Return), PanelKey::Return);
    EXPECT_EQ(pressed(Qt::Key_Enter, 0, Qt::KeypadModifier), PanelKey::Return);
}

TEST(PanelKeyTest, LettersAreTakenByTheirLabel)
{
    EXPECT_EQ(pressed(Qt::Key_C, kPlaceOfC), PanelKey::C);
    // German: Z stands where a US keyboard has Y, and undoes.
    EXPECT_EQ(pressed(Qt::Key_Z, kPlaceOfY), PanelKey::Other);
    EXPECT_EQ(pressed(Qt::Key_Y, 52), PanelKey::Y);
}

TEST(PanelKeyTest, WithoutLatinLettersThePlaceDecides)
{
    constexpr int kCyrillicEs = 0x0421;
    EXPECT_EQ(pressed(kCyrillicEs, kPlaceOfC), PanelKey::C);
    EXPECT_EQ(pressed(kCyrillicEs, 55), PanelKey::Other);
}

TEST(PanelKeyTest, DigitsAndSignsInThePlaceOfALetterAreThemselves)
{
    EXPECT_EQ(pressed(Qt::Key_Semicolon, 33), PanelKey::Other);
}

TEST(PanelKeyTest, ModifiersAloneAreNoTyping)
{
    EXPECT_EQ(pressed(Qt::Key_Shift), PanelKey::Modifier);
    EXPECT_EQ(pressed(Qt::Key_CapsLock), PanelKey::Modifier);
    EXPECT_EQ(pressed(Qt::Key_Left), PanelKey::Other);
}

} // namespace
} // namespace tessary
