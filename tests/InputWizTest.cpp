#include "Vellacore/Core/Logger.h"
#include "Vellacore/Input/InputWiz.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/System/System.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

using namespace Vellacore;

namespace {

// A touchscreen in place of tslib's, configurable or not, with the sample (200, 700) pending or not.
struct { bool m_Configures, m_Pending; int m_Closed; } S_Script;

// Runs body on an initialised InputWiz with a fresh log, then exits and destroys it; returns the log.
std::string Drive(void (*body)(InputWiz& input))
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    Ptr<InputWiz> input = InputWiz::Create();
    EXPECT_TRUE(input->Init());
    body(*input);
    input->Exit();
    EXPECT_FALSE(input->SupportsCursor());
    input = nullptr;
    Logger::Exit();
    return VellacoreTest::ReadFile("Xapp.log");
}

std::string const Opening = "---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n"
                            "[D] Opening /dev/input/event0 for touchscreen.\n";

} // namespace

TEST(InputWiz, WithoutATouchscreenTslibGivesNoCursor)
{
    if (std::filesystem::exists("/dev/input/event0"))
        GTEST_SKIP() << "this machine has /dev/input/event0";
    EXPECT_EQ(Opening + "[I] InputWiz::Exit\n[I] ~InputWiz\n", Drive([](InputWiz& input) {
        EXPECT_FALSE(input.SupportsCursor());
        int x = 0, y = 0;
        EXPECT_FALSE(input.GetCursorPos(x, y));
    }));
}

// A touchscreen whose configuration failed is kept and read all the same, only not announced.
TEST(InputWiz, SamplesAreSwappedAndMirrored)
{
    InputWiz::TouchScreen const real = InputWiz::S_TouchScreen;
    InputWiz::S_TouchScreen = { [](char const*) { return reinterpret_cast<tsdev*>(&S_Script); },
        [](tsdev*) { return S_Script.m_Configures; },
        [](tsdev*, int& x, int& y) { return std::exchange(S_Script.m_Pending, false) && (x = 200, y = 700, true); },
        [](tsdev*) { ++S_Script.m_Closed; } };
    for (bool configures : { true, false }) {
        S_Script = { configures, true, 0 };
        EXPECT_EQ(Opening + (configures ? "[I] TouchScreen ready.\n" : "") + "[I] InputWiz::Exit\n[I] ~InputWiz\n",
            Drive([](InputWiz& input) {
                EXPECT_TRUE(input.SupportsCursor());
                int x = 0, y = 0;
                EXPECT_TRUE(input.GetCursorPos(x, y));
                EXPECT_TRUE(input.GetCursorPos(x, y)); // no new sample: the position stays
                EXPECT_EQ(std::make_pair(300, 800), std::make_pair(x, y));
            }));
        EXPECT_EQ(1, S_Script.m_Closed);
    }
    InputWiz::S_TouchScreen = real;
}

// Active low, the high register giving the upper 16 bits; a host Init reads nothing pressed.
TEST(InputWiz, ButtonsAreTheInvertedGPIOInputs)
{
    ASSERT_TRUE(System::Init());
    Ptr<Input> input = Input::Create();
    EXPECT_EQ(0u, input->GetButtonState());
    U16 volatile* gpio = System::Data->m_Registers16;
    for (auto [low, high, mask] : { std::tuple(0xFF3F, 0xFFFC, 0x300C0u), std::tuple(0x0000, 0x0000, 0xFFFFFFFFu) }) {
        InputWiz::SetButtonState(mask);
        EXPECT_EQ(std::pair(low, high), std::pair(int(gpio[0xA058 / 2]), int(gpio[0xA098 / 2])));
        EXPECT_EQ(mask, input->GetButtonState()) << std::hex << mask;
    }
    EXPECT_TRUE(System::Exit());
}
