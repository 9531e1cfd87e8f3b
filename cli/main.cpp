/// zelfx: the effects on the command line.

#include "cli/Options.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"

#include <exception>
#include <iostream>
#include <new>

int main(int argc, char** argv) {
    const zel::Verb verbs[] = {
        zel::ListVerb(),
        zel::DescribeVerb(),
        zel::RenderVerb(),
        zel::CurveVerb(),
        zel::ConvertVerb(),
        zel::PatternVerb(),
        zel::PlaceVerb(),
    };
    try {
        return zel::RunVerbs(verbs, argc, argv);
    } catch (const zel::Error& e) {
        std::cerr << "zelfx: " << e.what() << '\n';
        return static_cast<int>(e.Kind());
    } catch (const std::bad_alloc&) {
        std::cerr << "zelfx: out of memory\n";
    } catch (const std::exception& e) {
        std::cerr << "zelfx: unexpected: " << e.what() << '\n';
    }
    return static_cast<int>(zel::ErrorKind::Other);
}
