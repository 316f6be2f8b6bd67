#include "ui/quicksearch/PanelKey.h"

namespace tessary {
namespace {

/// Places of the letters, as evdev's key codes plus 8, which both X11 and Wayland report.
PanelKey keyAtPlace(quint32 scanCode)
{
    switch (scanCode) {
    case 54:
        return PanelKey::C;
    case 29:
        return PanelKey::Y;
    case 32:
        return PanelKey::O;
    case 40:
        return PanelKey::D;
    case 33:
        return PanelKey::P;
    default:
        return PanelKey::Other;
    }
}

} // namespace

PanelKey panelKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Up:
        return PanelKey::Up;
    case Qt::Key_Down:
        return PanelKey::Down;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return PanelKey::Return;
    case Qt::Key_Space:
        return PanelKey::Space;
    case Qt::Key_Backspace:
        return PanelKey::Backspace;
    case Qt::Key_Escape:
        return PanelKey::Escape;
    case Qt::Key_C:
        return PanelKey::C;
    case Qt::Key_Y:
        return PanelKey::Y;
    case Qt::Key_O:
        return PanelKey::O;
    case Qt::Key_D:
        return PanelKey::D;
    case Qt::Key_P:
        return PanelKey::P;
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
        return PanelKey::Modifier;
    default:
        break;
    }
    const bool isLatin = event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
    const bool isSign = event.key() < 0x80; // punctuation and digits keep their label
    return isLatin || isSign ? PanelKey::Other : keyAtPlace(event.nativeScanCode());
}

} // namespace tessary
