#include "Vellacore/Core/Logger.h"
#include "Vellacore/Input/InputWiz.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/System/System.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <deque>
#include <tuple>
#include <utility>

using namespace Vellacore;

namespace {

// A touchscreen in place of tslib's: there or not, configurable or not, with the samples pending.
struct Script {
    bool m_Present = true;
    bool m_Configures = true;
    std::deque<std::pair<int, int>> m_Samples;
    int m_Closed = 0;
} S_Script;

// Runs the test body against the script with a fresh log and returns the log's lines.
template <class Body>
std::string Scripted(Script const& script, Body body)
{
    VellacoreTest::TempDir dir;
    InputWiz::TouchScreen const real = InputWiz::S_TouchScreen;
    InputWiz::S_TouchScreen = {
        [](char const*) { return S_Script.m_Present ? reinterpret_cast<tsdev*>(&S_Script) : nullptr; },
        [](tsdev*) { return S_Script.m_Configures; },
        [](tsdev*, int& x, int& y) {
            if (S_Script.m_Samples.empty())
                return false;
            std::tie(x, y) = S_Script.m_Samples.front();
            S_Script.m_Samples.pop_front();
            return true;
        },
        [](tsdev*) { ++S_Script.m_Closed; } };
    S_Script = script;
    Logger::Init();
    body();
    Logger::Exit();
    InputWiz::S_TouchScreen = real;
    std::string log = VellacoreTest::ReadFile("Xapp.log");
    return log.substr(log.find('\n') + 1);
}

std::string const Opening = "[D] Opening /dev/input/event0 for touchscreen.\n";

} // namespace

TEST(InputWiz, WithoutATouchscreenThereIsNoCursor)
{
    Script absent;
    absent.m_Present = false;
    std::string log = Scripted(absent, [] {
        Ptr<InputWiz> input = InputWiz::Create();
        EXPECT_TRUE(input->Init());
        EXPECT_FALSE(input->SupportsCursor());
        int x = 5, y = 6;
        EXPECT_FALSE(input->GetCursorPos(x, y));
        EXPECT_EQ(std::make_pair(5, 6), std::make_pair(x, y));
        input->Exit();
    });
    EXPECT_EQ(0, S_Script.m_Closed);
    EXPECT_EQ(Opening + "[I] InputWiz::Exit\n[I] ~InputWiz\n", log);
}

// A touchscreen whose configuration failed is kept and read all the same, only not announced.
TEST(InputWiz, SamplesAreSwappedAndMirrored)
{
    for (bool configures : { true, false }) {
        Script script;
        script.m_Configures = configures;
        script.m_Samples = { { 200, 700 } };
        std::string log = Scripted(script, [] {
            Ptr<InputWiz> input = InputWiz::Create();
            EXPECT_TRUE(input->Init());
            EXPECT_TRUE(input->SupportsCursor());
            int x = 0, y = 0;
            // The second read finds no new sample and keeps the position.
            for (int read = 0; read < 2; ++read) {
                EXPECT_TRUE(input->GetCursorPos(x, y));
                EXPECT_EQ(std::make_pair(300, 800), std::make_pair(x, y));
            }
            input->Exit();
            EXPECT_FALSE(input->SupportsCursor());
        });
        EXPECT_EQ(1, S_Script.m_Closed);
        EXPECT_EQ(Opening + (configures ? "[I] TouchScreen ready.\n" : "") + "[I] InputWiz::Exit\n[I] ~InputWiz\n", log);
    }
}

TEST(InputWiz, TslibWithoutATouchscreenGivesNoCursor)
{
    if (std::filesystem::exists("/dev/input/event0"))
        GTEST_SKIP() << "this machine has /dev/input/event0";
    Ptr<Input> input = Input::Create();
    EXPECT_TRUE(input->Init());
    EXPECT_FALSE(input->SupportsCursor());
    input->Exit();
}

TEST(InputWiz, ButtonsAreTheInvertedGPIOInputs)
{
    ASSERT_TRUE(System::Init());
    Ptr<Input> input = Input::Create();
    EXPECT_EQ(0u, input->GetButtonState());
    struct {
        U16 low;
        U16 high;
        unsigned int mask;
    } const cases[] = { { 0xFFFE, 0xFFFF, 0x1 }, { 0xFFFF, 0x7FFF, 0x80000000 }, { 0xFF3F, 0xFFFC, 0x300C0 },
        { 0x0000, 0x0000, 0xFFFFFFFF } };
    for (auto const& c : cases) {
        System::Data->m_Registers16[0xA058 / 2] = c.low;
        System::Data->m_Registers16[0xA098 / 2] = c.high;
        EXPECT_EQ(c.mask, input->GetButtonState()) << std::hex << c.mask;
    }
    InputWiz::SetButtonState(0x410080);
    EXPECT_EQ(0x410080u, input->GetButtonState());
    EXPECT_TRUE(System::Exit());
}
