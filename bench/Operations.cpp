// What is measured: the operations of a host and of a user, and the bare work beside each.
#include "Operations.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <string>

#include "Bare.h"
#include "DocumentSets.h"
#include "shell/VRN_MethodEditor.h"

namespace vrn::bench {

namespace {

using shell::VRN_MethodEditor;

void load(VRN_MethodEditor& editor, const DocumentSet& set) {
    editor.SetXmlDocuments(set.macros, set.objects, set.method, set.configuration);
}

// The editor keeps a catalogue that is handed over again. Here it never is: two that differ in a line end take turns.
void measureLoad(benchmark::State& run, const DocumentSet& set) {
    DocumentSet other = set;
    for (auto* const text : {&other.macros, &other.objects, &other.configuration}) {
        *text += '\n';
    }
    VRN_MethodEditor editor;
    bool isOther = false;
    for (auto _ : run) {
        load(editor, isOther ? other : set);
        isOther = !isOther;
    }
}

void measureNextMethod(benchmark::State& run, const DocumentSet& set) {
    VRN_MethodEditor editor;
    load(editor, set);
    for (auto _ : run) {
        load(editor, set);
    }
}

void measureBareLoad(benchmark::State& run, const DocumentSet& set) {
    for (auto _ : run) {
        benchmark::DoNotOptimize(bareLoad(set));
    }
}

void measureBareRoundTrip(benchmark::State& run, const DocumentSet& set) {
    for (auto _ : run) {
        benchmark::DoNotOptimize(bareRoundTrip(set.method));
    }
}

// Runs `operation` on an editor that has the set loaded.
template <typename Operation>
void measureLoaded(benchmark::State& run, const DocumentSet& set, Operation&& operation) {
    VRN_MethodEditor editor;
    load(editor, set);
    for (auto _ : run) {
        operation(editor);
    }
}

void insertAndDelete(VRN_MethodEditor& editor) {
    auto& state = editor.state();
    state.cmdInsert.userClick();
    state.lstMethodMacroList.userSelect(1);
    state.cmdDelete.userClick();
    state.lstMethodMacroList.userSelect(0);
}

void selectOther(VRN_MethodEditor& editor) {
    auto& list = editor.state().lstMethodMacroList;
    list.userSelect((list.listIndex() + 1) % list.count());
}

void add(std::string_view operation, Dimension dimension, std::string_view dimensionName, std::size_t size,
         void (*measure)(benchmark::State&, const DocumentSet&)) {
    const auto name = std::string(operation) + "/" + std::string(dimensionName) + "/" + std::to_string(size);
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& run) {
        const auto& set = documentSet(dimension, size);
        // What another operation has freed in many small pieces is put together by the next large allocation, and would count as
        // this one's work.
        malloc_trim(0);
        measure(run, set);
    })->Unit(benchmark::kMicrosecond);
}

}  // namespace

void registerOperations() {
    for (const auto& [dimension, name] : dimensions) {
        for (const auto size : sizes) {
            add("BareLoad", dimension, name, size, measureBareLoad);
            add("SetXmlDocuments", dimension, name, size, measureLoad);
            add("NextMethod", dimension, name, size, measureNextMethod);
            add("BareRoundTrip", dimension, name, size, measureBareRoundTrip);
            add("GetMethodXml", dimension, name, size, [](benchmark::State& run, const DocumentSet& set) {
                measureLoaded(run, set,
                              [](VRN_MethodEditor& editor) { benchmark::DoNotOptimize(editor.GetMethodXml()); });
            });
            add("MethodIsChanged", dimension, name, size, [](benchmark::State& run, const DocumentSet& set) {
                measureLoaded(run, set,
                              [](VRN_MethodEditor& editor) { benchmark::DoNotOptimize(editor.MethodIsChanged()); });
            });
            add("AuditTrail", dimension, name, size, [](benchmark::State& run, const DocumentSet& set) {
                measureLoaded(run, set,
                              [](VRN_MethodEditor& editor) { benchmark::DoNotOptimize(editor.AuditTrail()); });
            });
            add("InsertAndDelete", dimension, name, size,
                [](benchmark::State& run, const DocumentSet& set) { measureLoaded(run, set, insertAndDelete); });
            add("ListSelection", dimension, name, size,
                [](benchmark::State& run, const DocumentSet& set) { measureLoaded(run, set, selectOther); });
        }
    }
}

}  // namespace vrn::bench
