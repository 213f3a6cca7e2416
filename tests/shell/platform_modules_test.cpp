#include <gtest/gtest.h>

#include <cmath>

#include "platform/D3DMath.h"
#include "platform/DirectInput.h"
#include "platform/DirectX.h"
#include "platform/QuorbitDebug.h"
#include "tests/shell/TestGame.h"

namespace qb {
namespace {

// Direct3D's conventions: left-handed, row vectors, depth 0 at the near
// plane and 1 at the far one.
TEST(Matrices, TheStartCameraSeesItsTargetAheadWithRightAndUpKept) {
    // Eye (0, 25, -18) looking at (0, 8, 0).
    const Matrix4 m = MatrixLookAtLH({0, 25, -18}, {0, 8, 0}, {0, 1, 0});
    const float len = std::sqrt(17.0f * 17.0f + 18.0f * 18.0f);
    const Vector3 at = TransformCoord({0, 8, 0}, m);
    EXPECT_NEAR(at.x, 0, 1e-5);
    EXPECT_NEAR(at.y, 0, 1e-5);
    EXPECT_NEAR(at.z, len, 1e-4);
    // One unit right of the target is one unit right in view; above is above.
    EXPECT_NEAR(TransformCoord({1, 8, 0}, m).x, 1.0f, 1e-5);
    EXPECT_GT(TransformCoord({0, 9, 0}, m).y, 0.5f);

    const float halfFov = 3.14159265f / 8;
    const Matrix4 p = MatrixPerspectiveFovLH(2 * halfFov, 1.0f, 0.1f, 500.0f);
    EXPECT_NEAR(TransformCoord({0, 0, 0.1f}, p).z, 0.0f, 1e-5);
    EXPECT_NEAR(TransformCoord({0, 0, 500.0f}, p).z, 1.0f, 1e-5);
    // The edges of the field of view land on the edges of the picture.
    const float edge = 10 * std::tan(halfFov);
    EXPECT_NEAR(TransformCoord({0, edge, 10}, p).y, 1.0f, 1e-5);
    EXPECT_NEAR(TransformCoord({-edge, 0, 10}, p).x, -1.0f, 1e-5);
    // Row vectors: translation lives in the fourth row.
    const Vector3 moved = TransformCoord({1, 1, 1}, MatrixTranslation(1, 2, 3));
    EXPECT_FLOAT_EQ(moved.x, 2);
    EXPECT_FLOAT_EQ(moved.z, 4);
}

TEST(DebugLog, RecordsAreQuotedWithCrlfAndNumbersPlain) {
    const std::string dir = test::FreshDir("debuglog");
    FixedSystemInfo sys;
    sys.os = "";  // an unknown system gives an empty name
    sys.cpu = CleanProcessorName(std::string(255, '\0'));
    sys.mhz = 0;
    {
        QuorbitDebug log;
        log.Open(dir + "Debug.txt", sys, "2026-11-23");
        log.WriteLine("Buffer Overflow -> Compensating");
        log.WriteLine("say \"hi\"");
        log.Close();
        log.WriteLine("after close is harmless");
    }
    const auto lines = test::ReadCrlfLines(dir + "Debug.txt");
    EXPECT_EQ(lines, (std::vector<std::string>{"", "\"Quorbit Debug\"", "\"Operating system\",\"\"",
                                               "#2026-11-23#", "", "\"(unknown)\"", "\"CPU Speed\",0,\"Mhz\"",
                                               "\"Memory\",\"511.48046875\"", "",
                                               "\"Buffer Overflow -> Compensating\"", "\"say \"\"hi\"\"\""}));
}

TEST(SystemFacts, ProcessorNameAndAdapterNameCleaning) {
    EXPECT_EQ(CleanProcessorName(std::string("AMD Ryzen\0garbage", 17)), "AMD Ryzen");
    const std::string full(255, 'x');  // no NUL at all: kept whole
    EXPECT_EQ(CleanProcessorName(full).size(), 255u);
    std::string card = "GeForce";
    card.resize(512, '\0');
    card[300] = 'X';
    EXPECT_EQ(CleanAdapterName(card), "GeForceX");
    EXPECT_EQ(QuorbitDebug::MegabytesText(1024ull * 1024 * 2048), "2048");
    LinuxSystemInfo real;
    EXPECT_GT(real.totalPhysicalMemory(), 0u);
    EXPECT_FALSE(real.processorName().empty());
}

TEST(Trim, DropsBlanksAndControlCharactersAtBothEnds) {
    EXPECT_EQ(Trim("  \t NAME \r\n"), "NAME");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(Trim(" \x01 "), "");
    EXPECT_EQ(Trim("A B"), "A B");
}

TEST(ScriptedKeyboard, MoreThanTenEventsBetweenReadsReportTheOverflow) {
    ScriptedKeyboard k;
    std::vector<KeyEvent> events;
    for (int i = 0; i < 6; ++i) {
        k.press(DIK_A);
        k.release(DIK_A);
    }
    EXPECT_EQ(k.getEvents(events), KeyboardDevice::DIERR_BUFFEROVERFLOW);
    EXPECT_EQ(events.size(), 10u);
    EXPECT_EQ(k.getEvents(events), 0);
    EXPECT_TRUE(events.empty());
}

}  // namespace
}  // namespace qb
