#include "Vellacore/Input/InputWiz.h"

#include "Vellacore/Core/Logger.h"
#include "Vellacore/Memory/Memory.h"
#include "Vellacore/System/System.h"

#include <tslib.h>

namespace Vellacore {

namespace {

char const S_DevicePath[] = "/dev/input/event0";

// Null when there is no touchscreen; shared by every InputWiz, as the device is.
tsdev* S_Handle = nullptr;

void Log(char const* level, char const* text)
{
    if (Logger* log = Logger::Instance())
        log->p(level).p(text).pLF();
}

tsdev* OpenTS(char const* device)
{
    return ts_open(device, 1);
}

bool ConfigureTS(tsdev* handle)
{
    return ts_config(handle) == 0;
}

bool ReadTS(tsdev* handle, int& x, int& y)
{
    ts_sample sample;
    if (ts_read(handle, &sample, 1) != 1)
        return false;
    x = sample.x;
    y = sample.y;
    return true;
}

void CloseTS(tsdev* handle)
{
    ts_close(handle);
}

U32 ReadGPIO(U32 offset)
{
    return System::Data->m_Registers16[offset / 2];
}

} // namespace

InputWiz::TouchScreen InputWiz::S_TouchScreen = { &OpenTS, &ConfigureTS, &ReadTS, &CloseTS };

Input* Input::Create()
{
    return InputWiz::Create();
}

InputWiz* InputWiz::Create()
{
    return new (TypeInfoT<InputWiz>::S_TypeInfo_1) InputWiz();
}

InputWiz::~InputWiz()
{
    Log("[I] ", "~InputWiz");
}

// A handle whose configuration failed is kept: the device may still deliver raw samples.
bool InputWiz::Init()
{
    Log("[D] ", "Opening /dev/input/event0 for touchscreen.");
    S_Handle = S_TouchScreen.Open(S_DevicePath);
    if (S_Handle && S_TouchScreen.Configure(S_Handle))
        Log("[I] ", "TouchScreen ready.");
    return true;
}

void InputWiz::Exit()
{
    if (S_Handle) {
        S_TouchScreen.Close(S_Handle);
        S_Handle = nullptr;
    }
    Log("[I] ", "InputWiz::Exit");
}

// The lines are active low: a pressed button reads 0.
unsigned int InputWiz::GetButtonState()
{
    return ~(ReadGPIO(System::GPIOInputHigh) << 16 | ReadGPIO(System::GPIOInputLow));
}

bool InputWiz::SupportsCursor() const
{
    return S_Handle != nullptr;
}

// The panel is mounted turned: its axes are swapped and mirrored against a nominal 0 to 1000.
bool InputWiz::GetCursorPos(int& x, int& y)
{
    if (!S_Handle)
        return false;
    int sampleX;
    int sampleY;
    if (S_TouchScreen.Read(S_Handle, sampleX, sampleY)) {
        x = WrapI32(1000u - static_cast<U32>(sampleY));
        y = WrapI32(1000u - static_cast<U32>(sampleX));
    }
    return true;
}

void InputWiz::SetButtonState(unsigned int mask)
{
    System::Data->m_Registers16[System::GPIOInputLow / 2] = static_cast<U16>(~mask);
    System::Data->m_Registers16[System::GPIOInputHigh / 2] = static_cast<U16>(~mask >> 16);
}

} // namespace Vellacore
