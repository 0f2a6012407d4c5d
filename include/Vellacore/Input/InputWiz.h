#ifndef VELLACORE_INPUT_INPUTWIZ_H
#define VELLACORE_INPUT_INPUTWIZ_H

#include "Vellacore/Input/Input.h"

struct tsdev;

namespace Vellacore {

// The GP2X Wiz's buttons and touchscreen. Buttons are the GPIO input registers of the block that
// System maps, so System::Init() must come first; the touchscreen is read through tslib and is
// optional: without one the device works, only without a cursor.
class InputWiz : public Input {
public:
    // The touchscreen calls, tslib's unless a test puts its own in to feed samples without a
    // device. Open gives null when there is no touchscreen; Read gives false when no new sample
    // is pending.
    struct TouchScreen {
        tsdev* (*Open)(char const* device);
        bool (*Configure)(tsdev* handle);
        bool (*Read)(tsdev* handle, int& x, int& y);
        void (*Close)(tsdev* handle);
    };
    static TouchScreen S_TouchScreen;

    static InputWiz* Create();
    ~InputWiz() override;

    // Never fails: a missing or unconfigurable touchscreen only means no cursor.
    bool Init() override;
    void Exit() override;
    unsigned int GetButtonState() override;
    bool SupportsCursor() const override;
    // Without a new sample the last position stays valid: true, x and y untouched. A release is
    // not reported.
    bool GetCursorPos(int& x, int& y) override;

    // How a program on the host presses buttons: writes the emulated GPIO input registers so that
    // GetButtonState() returns mask. On the handheld those registers are the buttons' own lines.
    static void SetButtonState(unsigned int mask);
};

} // namespace Vellacore

#endif
