// Makes a sequence of operations out of the bytes that libFuzzer makes up, on one state of the family that the program
// is linked with: the first byte chooses the instantiation, then a byte each an operation, which takes its arguments
// from the bytes that follow. With CORVEX_FUZZ_TRACE=1 in the environment the operations are shown by name.

#include <tests/catalogue/Operations.h>

using namespace CorvexCatalogue;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool isTraced = std::getenv("CORVEX_FUZZ_TRACE") != nullptr;
    Source source(data, size);
    Sink sink;
    const Instance& instance = GetCatalogue()[source.Below(static_cast<unsigned int>(GetCatalogue().size()))];
    const std::unique_ptr<State> state = instance.make(source, sink);
    while (!source.IsUsedUp()) {
        // One more choice stands for new content.
        const unsigned int index = source.Below(static_cast<unsigned int>(instance.operations.size()) + 1);
        const bool isFill = index == instance.operations.size();
        running = instance.name + "::" + (isFill ? "Fill" : instance.operations[index].name);
        if (isTraced) std::fprintf(stderr, "%s\n", running.c_str());
        isFill ? state->Fill() : (*state.*instance.operations[index].run)();
        state->Check();
    }
    state->Show();
    return 0;
}
