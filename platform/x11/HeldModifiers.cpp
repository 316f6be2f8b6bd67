#include "platform/x11/HeldModifiers.h"

#include "platform/x11/ModifierMasks.h"
#include "platform/x11/XcbReply.h"

#include <QByteArrayView>

#include <algorithm>
#include <array>
#include <set>

#include <xcb/xinput.h>

namespace tessary {
namespace {

using KeyBits = std::array<uint8_t, 32>;

bool isDown(const KeyBits& keys, xcb_keycode_t key)
{
    return ((keys.at(key / 8U) >> (key % 8U)) & 1U) != 0;
}

std::set<xcb_keycode_t> modifierKeys(xcb_connection_t* connection)
{
    const XcbReply<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    std::set<xcb_keycode_t> keys;
    if (!mapping)
        return keys;
    const unsigned locks = XCB_MOD_MASK_LOCK | ModifierMasks::read(connection).numLock;
    const xcb_keycode_t* keycodes = xcb_get_modifier_mapping_keycodes(mapping.get());
    const int width = mapping->keycodes_per_modifier;
    for (int place = 0; place < 8 * width; ++place) {
        const bool isLock = ((locks >> (place / width)) & 1U) != 0;
        if (!isLock && keycodes[place] != 0)
            keys.insert(keycodes[place]);
    }
    return keys;
}

/// The keyboards that a person types on.
std::vector<uint8_t> physicalKeyboards(xcb_connection_t* connection)
{
    std::vector<uint8_t> keyboards;
    const XcbReply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        connection, xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL), nullptr));
    if (!devices)
        return keyboards;
    auto device = xcb_input_xi_query_device_infos_iterator(devices.get());
    for (; device.rem > 0; xcb_input_xi_device_info_next(&device)) {
        const QByteArrayView name(xcb_input_xi_device_info_name(device.data),
                                  xcb_input_xi_device_info_name_length(device.data));
        if (device.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD && !name.contains("XTEST"))
            keyboards.push_back(static_cast<uint8_t>(device.data->deviceid));
    }
    return keyboards;
}

KeyBits keysDownOn(xcb_connection_t* connection, uint8_t device)
{
    KeyBits bits{};
    const XcbReply<xcb_input_query_device_state_reply_t> state(xcb_input_query_device_state_reply(
        connection, xcb_input_query_device_state(connection, device), nullptr));
    if (!state)
        return bits;
    auto part = xcb_input_query_device_state_classes_iterator(state.get());
    for (; part.rem > 0; xcb_input_input_state_next(&part)) {
        if (part.data->class_id != XCB_INPUT_INPUT_CLASS_KEY)
            continue;
        const auto* keys = reinterpret_cast<const xcb_input_key_state_t*>(part.data);
        std::copy_n(keys->keys, bits.size(), bits.begin());
    }
    return bits;
}

} // namespace

std::vector<xcb_keycode_t> heldModifiers(xcb_connection_t* connection)
{
    std::vector<xcb_keycode_t> held;
    const XcbReply<xcb_query_keymap_reply_t> keymap(
        xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr));
    if (!keymap)
        return held;
    KeyBits down{};
    std::copy_n(keymap->keys, down.size(), down.begin());
    for (const xcb_keycode_t key : modifierKeys(connection)) {
        if (isDown(down, key))
            held.push_back(key);
    }
    return held;
}

std::vector<xcb_keycode_t> physicallyHeld(xcb_connection_t* connection,
                                          const std::vector<xcb_keycode_t>& keys)
{
    std::vector<xcb_keycode_t> held;
    if (keys.empty())
        return held;
    KeyBits down{};
    for (const uint8_t keyboard : physicalKeyboards(connection)) {
        const KeyBits there = keysDownOn(connection, keyboard);
        std::transform(down.begin(), down.end(), there.begin(), down.begin(), std::bit_or<uint8_t>());
    }
    std::copy_if(keys.begin(), keys.end(), std::back_inserter(held),
                 [&down](xcb_keycode_t key) { return isDown(down, key); });
    return held;
}

} // namespace tessary
