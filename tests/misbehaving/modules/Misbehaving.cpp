/// Effects that do what no effect should. Every one of them becomes a module of its own,
/// named like the class: the build defines ZEL_EFFECT_CLASS.

#include "abi/HostCodes.h"
#include "host/CAEFxLut.h"
#include "host/Entry.h"

#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

namespace {

/// What an effect is called with.
struct Call {
    PF_InData* in;
    PF_OutData* out;
    PF_LayerDef *input, *output;  // frames; the input is there in a render only
};

/// An effect that does `deed` when it gets `Command`, and is well-behaved otherwise.
template <PF_Cmd Command, PF_Err (*Deed)(const Call&)>
class Does : public CAEFxLut {
    PF_Err Main(int cmd, PF_InData* in, PF_OutData* out, PF_ParamDef* params[], PF_LayerDef* output,
                void* extra) override {
        if (cmd != Command) return CAEFxLut::Main(cmd, in, out, params, output, extra);
        return Deed({in, out, params ? &params[0]->u.ld : nullptr, output});
    }
};

template <PF_Err (*Deed)(const Call&)>
class DoesWhenLoaded : public CAEFxLut {
public:
    DoesWhenLoaded() { Deed({}); }
};

// --- deeds ----------------------------------------------------------------------

/// In the first page of memory, which no process has. Not a constant: compilers complain.
int* volatile nowhere = reinterpret_cast<int*>(64);

PF_Err Crash(const Call&) {
    *nowhere = 1;
    return PF_Err_NONE;
}

PF_Err Hang(const Call&) {
    for (const int signal : {SIGTERM, SIGINT, SIGALRM}) std::signal(signal, SIG_IGN);
    for (;;) usleep(1000);
}

PF_Err Exit(const Call&) { std::exit(0); }
PF_Err Abort(const Call&) { std::abort(); }

int Deeper(volatile char* above) {
    volatile char here[4096];
    here[0] = *above;
    return *above ? Deeper(here) + here[0] : 0;
}
PF_Err UseUpStack(const Call&) {
    volatile char start = 1;
    return Deeper(&start);
}

volatile unsigned char* FirstByte(const PF_LayerDef* frame) {
    return reinterpret_cast<volatile unsigned char*>(frame->data);
}
volatile unsigned char* BehindLastRow(const PF_LayerDef* frame) {
    return FirstByte(frame) + std::ptrdiff_t{frame->rowbytes} * frame->height;
}

PF_Err CrashAtWhite(const Call& call) {
    const unsigned char first = *FirstByte(call.input);
    if (first == 0xFF) Crash(call);
    *FirstByte(call.output) = static_cast<unsigned char>(first + 1);
    return PF_Err_NONE;
}

constexpr std::ptrdiff_t kFar = 65536;

PF_Err Put(volatile unsigned char* where) {
    *where = 0;
    return PF_Err_NONE;
}

PF_Err WriteBefore(const Call& call) { return Put(FirstByte(call.output) - 3); }
PF_Err WriteFarBefore(const Call& call) { return Put(FirstByte(call.output) - kFar); }
PF_Err WriteBeside(const Call& call) {
    return Put(FirstByte(call.output) + 4 * call.output->width);
}
PF_Err WriteBehind(const Call& call) { return Put(BehindLastRow(call.output)); }
PF_Err WriteFarBehind(const Call& call) { return Put(BehindLastRow(call.output) + kFar - 1); }
PF_Err ReadFarBehind(const Call& call) { return BehindLastRow(call.input)[kFar - 1]; }

PF_Err ThrowInt(const Call&) { throw 516; }
PF_Err ThrowException(const Call&) { throw std::runtime_error("no\nway"); }
PF_Err ThrowObject(const Call&) { throw std::string("text"); }

PF_Err AnswerNonsense(const Call& call) {
    std::memset(call.out->return_msg, '\x1B', sizeof call.out->return_msg);
    return -2147483647 - 1;
}
PF_Err WriteEndlessName(const Call& call) {
    std::memset(call.out->return_msg, 'n', sizeof call.out->return_msg);
    return PF_Err_NONE;
}

template <int Count>
PF_Err Add(const Call& call) {
    PF_ParamDef def{};
    def.param_type = PF_Param_FLOAT_SLIDER;
    std::memset(zel::abi::ParamName(def), 'p', 32);  // no end either
    for (int i = 0; i < Count; ++i) {
        def.uu.id = i + 1;
        const PF_Err error = call.in->inter.add_param(call.in->effect_ref, -1, &def);
        if (error) return error;
    }
    return PF_Err_NONE;
}

// --- effects --------------------------------------------------------------------

// clang-format off
using CrashesWhenLoaded     = DoesWhenLoaded<Crash>;
using CrashesInGlobalSetup  = Does<PF_Cmd_GLOBAL_SETUP,   Crash>;
using CrashesInParamsSetup  = Does<PF_Cmd_PARAMS_SETUP,   Crash>;
using CrashesInRender       = Does<PF_Cmd_RENDER,         Crash>;
using CrashesInSetdown      = Does<PF_Cmd_GLOBAL_SETDOWN, Crash>;
using CrashesAtWhite        = Does<PF_Cmd_RENDER,         CrashAtWhite>;
using UsesUpItsStack        = Does<PF_Cmd_RENDER,         UseUpStack>;
using Aborts                = Does<PF_Cmd_RENDER,         Abort>;
using NeverLoads            = DoesWhenLoaded<Hang>;
using NeverSetsUp           = Does<PF_Cmd_PARAMS_SETUP,   Hang>;
using NeverRenders          = Does<PF_Cmd_RENDER,         Hang>;
using NeverSetsDown         = Does<PF_Cmd_GLOBAL_SETDOWN, Hang>;
using ExitsInSetup          = Does<PF_Cmd_GLOBAL_SETUP,   Exit>;
using ExitsInRender         = Does<PF_Cmd_RENDER,         Exit>;
using ThrowsAnInt           = Does<PF_Cmd_RENDER,         ThrowInt>;
using ThrowsAnException     = Does<PF_Cmd_RENDER,         ThrowException>;
using ThrowsAnObject        = Does<PF_Cmd_RENDER,         ThrowObject>;
using WritesBeforeItsFrame  = Does<PF_Cmd_RENDER,         WriteBefore>;
using WritesFarBefore       = Does<PF_Cmd_RENDER,         WriteFarBefore>;
using WritesBesideItsRow    = Does<PF_Cmd_RENDER,         WriteBeside>;
using WritesBehindItsFrame  = Does<PF_Cmd_RENDER,         WriteBehind>;
using WritesFarBehind       = Does<PF_Cmd_RENDER,         WriteFarBehind>;
using ReadsFarBehind        = Does<PF_Cmd_RENDER,         ReadFarBehind>;
using AnswersNonsense       = Does<PF_Cmd_RENDER,         AnswerNonsense>;
using NamesItselfWithoutEnd = Does<PF_Cmd_ABOUT,          WriteEndlessName>;
using AddsNone              = Does<PF_Cmd_PARAMS_SETUP,   Add<0>>;
using AddsThousands         = Does<PF_Cmd_PARAMS_SETUP,   Add<5000>>;
using AddsWithoutEnd        = Does<PF_Cmd_PARAMS_SETUP,   Add<2147483647>>;
// clang-format on

ZEL_EFFECT_CLASS effect;

}  // namespace

CAEFx& TheEffect() { return effect; }
