/// Every command but PARAMS_SETUP and RENDER, through the loaded modules.

#include "tests/host/Modules.h"
#include "tests/host/Pixels.h"
#include "tests/support/Thrown.h"

#include <cstdio>
#include <limits>

namespace zel::test {
namespace {

class ModuleCommand : public EachModule {
protected:
    void* block = nullptr;  // sequence data, where a test has some
};

TEST_P(ModuleCommand, UnknownCommandsReturn0AndTouchNothing) {
    for (const PF_Cmd command :
         {2, 7, 9, 10, 12, 13, 15, 22, 23, 24, 33, 100, 4096, 65547, -1, -11,
          std::numeric_limits<PF_Cmd>::max(), std::numeric_limits<PF_Cmd>::min()}) {
        EXPECT_EQ(Send(command), PF_Err_NONE) << command;
        EXPECT_TRUE(Same(RecordingHost::UntouchedOut(), *host.Out())) << command;
        EXPECT_EQ(host.calls, Calls{}) << command;
    }
}

TEST_P(ModuleCommand, AboutIsNameVersionAndDescription) {
    EXPECT_EQ(Send(PF_Cmd_ABOUT), PF_Err_NONE);
    EXPECT_EQ(host.calls, Calls{"sprintf %s, v%d.%d\r%s"});
    const std::string text = host.Out()->return_msg;
    const std::string head = std::string(row.name) + ", v";
    const std::string tail = std::string("\r") + row.description;
    ASSERT_GT(text.size(), head.size() + tail.size());
    EXPECT_EQ(text.substr(0, head.size()), head);
    EXPECT_EQ(text.substr(text.size() - tail.size()), tail);

    PF_OutData expected = RecordingHost::UntouchedOut();
    std::strcpy(expected.return_msg, text.c_str());
    EXPECT_TRUE(Same(expected, *host.Out()));
}

// docs/quirks.md, "About numbers".
TEST_P(ModuleCommand, AboutNumbersAreTheAddressesOfTwoTexts128BytesApart) {
    Send(PF_Cmd_ABOUT);
    int major = 0, minor = 0;
    const char* const numbers = host.Out()->return_msg + std::string(row.name).size();
    ASSERT_EQ(std::sscanf(numbers, ", v%d.%d", &major, &minor), 2) << numbers;
    EXPECT_EQ(static_cast<std::uint32_t>(minor) - static_cast<std::uint32_t>(major), 128u);
}

Calls DeclarationOfFormats() {
    Calls calls{kAcquire, "ClearSupportedPixelFormats"};
    for (const FrameFormat& format : kFrameFormats)
        calls.push_back("AddSupportedPixelFormat " + FormatText(format.code));
    calls.push_back(kRelease);
    return calls;
}

TEST(FrameFormats, TextsOfTheDeclaredFormats) {
    const char* const texts[] = {"bgra", "argb", "Bgra", "BGra", "Argb"};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(FormatText(kFrameFormats[i].code), texts[i]);
}

TEST_P(ModuleCommand, GlobalSetupReportsVersionFlagsAndFormats) {
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    PF_OutData expected = RecordingHost::UntouchedOut();
    expected.my_version = 0x200001;
    if (premiere) {
        expected.out_flags = 0x8400;
        EXPECT_EQ(host.calls, DeclarationOfFormats());
    } else {
        // The message of the failed acquire stays, its flag does not.
        ExpectAcquireMessage(expected);
        expected.out_flags = 0x2000400;
        EXPECT_EQ(host.calls, (Calls{kAcquire, kMessage}));
    }
    EXPECT_TRUE(Same(expected, *host.Out()));
}

TEST_P(ModuleCommand, GlobalSetupAgainReportsTheSame) {
    Send(PF_Cmd_GLOBAL_SETUP);
    const PF_OutData first = *host.Out();
    const Calls calls = host.calls;
    host.Reset();
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    EXPECT_TRUE(Same(first, *host.Out()));
    EXPECT_EQ(host.calls, calls);
}

TEST_P(ModuleCommand, GlobalSetupGoesByTheSuitePointerAlone) {
    host.wrong.suiteStaysNull = true;
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    EXPECT_EQ(host.Out()->out_flags, 0x2000400);
    EXPECT_EQ(host.calls, (Calls{kAcquire, kMessage}));

    host.Reset();
    host.wrong = {.acquireResult = 99};
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    EXPECT_EQ(host.Out()->out_flags, premiere ? 0x8400 : 0x2000400);
    EXPECT_EQ(host.calls, premiere ? DeclarationOfFormats() : (Calls{kAcquire, kMessage}));
}

TEST_P(ModuleCommand, GlobalSetupIgnoresFailuresOfTheSuiteAndOfItsRelease) {
    host.wrong = {.releaseResult = 7, .formatResult = PF_Err_INTERNAL_STRUCT_DAMAGED};
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    if (!premiere) return;
    EXPECT_EQ(host.calls, DeclarationOfFormats());
    PF_OutData expected = RecordingHost::UntouchedOut();
    expected.my_version = 0x200001;
    expected.out_flags = 0x8400;
    EXPECT_TRUE(Same(expected, *host.Out()));
}

TEST_P(ModuleCommand, GlobalSetupWithoutABasicSuiteThrows516OutOfTheEntryPoint) {
    host.wrong.noBasicSuite = true;
    EXPECT_EQ(ThrownBy([&] { Send(PF_Cmd_GLOBAL_SETUP); }), 516);
    // Version and first flags are written before the suite is looked for.
    PF_OutData expected = RecordingHost::UntouchedOut();
    expected.my_version = 0x200001;
    expected.out_flags = 0x8400;
    EXPECT_TRUE(Same(expected, *host.Out()));
    EXPECT_EQ(host.calls, Calls{});
}

TEST_P(ModuleCommand, GlobalSetdownTouchesAndCallsNothing) {
    Send(PF_Cmd_GLOBAL_SETUP);
    host.Reset();
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETDOWN), PF_Err_NONE);
    EXPECT_TRUE(Same(RecordingHost::UntouchedOut(), *host.Out()));
    EXPECT_EQ(host.calls, Calls{});
}

TEST_P(ModuleCommand, GlobalSetdownWithoutABasicSuiteThrows516OutOfTheEntryPoint) {
    host.wrong.noBasicSuite = true;
    EXPECT_EQ(ThrownBy([&] { Send(PF_Cmd_GLOBAL_SETDOWN); }), 516);
    EXPECT_TRUE(Same(RecordingHost::UntouchedOut(), *host.Out()));
}

TEST_P(ModuleCommand, SequenceCommandsWithoutDataTouchAndCallNothing) {
    for (const PF_Cmd command :
         {PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_RESETUP, PF_Cmd_SEQUENCE_SETDOWN}) {
        EXPECT_EQ(Send(command), PF_Err_NONE) << command;
        EXPECT_TRUE(Same(RecordingHost::UntouchedOut(), *host.Out())) << command;
        EXPECT_EQ(host.calls, Calls{}) << command;
    }
}

TEST_P(ModuleCommand, SequenceSetupAndResetupLeaveDataAlone) {
    host.sequenceData = &block;
    for (const PF_Cmd command : {PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_RESETUP}) {
        EXPECT_EQ(Send(command), PF_Err_NONE) << command;
        EXPECT_TRUE(Same(RecordingHost::UntouchedOut(), *host.Out())) << command;
        EXPECT_EQ(host.calls, Calls{}) << command;
    }
}

TEST_P(ModuleCommand, SequenceSetdownDisposesOfDataOnce) {
    host.sequenceData = &block;
    EXPECT_EQ(Send(PF_Cmd_SEQUENCE_SETDOWN), PF_Err_NONE);
    EXPECT_EQ(host.calls, Calls{"host_dispose_handle"});
    EXPECT_EQ(host.disposed, std::vector<PF_Handle>{&block});
    PF_OutData expected = RecordingHost::UntouchedOut();
    expected.sequence_data = nullptr;
    EXPECT_TRUE(Same(expected, *host.Out()));
}

#if !defined(__APPLE__)
TEST_P(ModuleCommand, SequenceSetdownWithoutTheCallbackClearsTheReferenceOnly) {
    host.sequenceData = &block;
    host.wrong.noDisposeHandle = true;
    EXPECT_EQ(Send(PF_Cmd_SEQUENCE_SETDOWN), PF_Err_NONE);
    EXPECT_EQ(host.calls, Calls{});
    PF_OutData expected = RecordingHost::UntouchedOut();
    expected.sequence_data = nullptr;
    EXPECT_TRUE(Same(expected, *host.Out()));
}
#endif

INSTANTIATE_TEST_SUITE_P(Modules, ModuleCommand, EachModuleInEachHost(), NameOf);

}  // namespace
}  // namespace zel::test
