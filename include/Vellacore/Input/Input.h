#ifndef VELLACORE_INPUT_INPUT_H
#define VELLACORE_INPUT_INPUT_H

#include "Vellacore/Core/Object.h"

namespace Vellacore {

// The engine's input device: a mask of pressed buttons and, where there is one, a pointing cursor.
class Input : public Object {
public:
    // Makes the platform's device; the owner calls Init before use and Exit at the end.
    static Input* Create();
    ~Input() override = 0;

    virtual bool Init() = 0;
    virtual void Exit() = 0;
    // One bit per pressed button, read afresh on every call.
    virtual unsigned int GetButtonState() = 0;
    virtual bool SupportsCursor() const;
    // False without a cursor, leaving x and y alone.
    virtual bool GetCursorPos(int& x, int& y);
};

} // namespace Vellacore

#endif
