#pragma once

/// A curve that only takes down which of its virtual functions were called, and with
/// which parameter array.

#include "lut/CUtilLut.h"

#include <string>
#include <vector>

namespace zel::test {

struct RecordingLut : CUtilLut {
    std::vector<std::string> calls;
    const float* params = nullptr;

    void Copy(CUtilLut*) override { calls.emplace_back("Copy"); }
    int Open() override { return calls.emplace_back("Open"), 0; }
    int Close() override { return calls.emplace_back("Close"), 0; }
    void Reset() override { calls.emplace_back("Reset"); }
    void SetWhiteLevel(float) override { calls.emplace_back("SetWhiteLevel"); }
    float QueryWhiteLevel() override { return calls.emplace_back("QueryWhiteLevel"), 0.0f; }
    void ApplyBrightness(float* p) override { Applied("ApplyBrightness", p); }
    void ApplyLog(float* p) override { Applied("ApplyLog", p); }
    void ApplyGamma(float* p) override { Applied("ApplyGamma", p); }
    void ApplyGamma2(float* p) override { Applied("ApplyGamma2", p); }
    void ApplyBrightness2(float* p) override { Applied("ApplyBrightness2", p); }
    void ApplyBalance(float* p) override { Applied("ApplyBalance", p); }
    void ApplyBalance2(float* p) override { Applied("ApplyBalance2", p); }
    void ApplyArithmetic(float* p) override { Applied("ApplyArithmetic", p); }
    void ApplyInvert(float* p) override { Applied("ApplyInvert", p); }
    void Build8Bit(unsigned char*, unsigned char*, unsigned char*) override {
        calls.emplace_back("Build8Bit");
    }
    void Build10Bit(unsigned short*, unsigned short*, unsigned short*) override {
        calls.emplace_back("Build10Bit16");
    }
    void Build10Bit(unsigned int*, unsigned int*, unsigned int*) override {
        calls.emplace_back("Build10Bit32");
    }
    void BuildZelLut(void*, int) override { calls.emplace_back("BuildZelLut"); }

private:
    void Applied(const char* name, const float* p) {
        calls.emplace_back(name);
        params = p;
    }
};

}  // namespace zel::test
