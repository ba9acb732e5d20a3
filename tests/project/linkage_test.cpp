#include "device/qv_aux2.h"
#include "support/listed_operations.h"
#include "support/unit.h"

#include <cstdlib>
#include <dlfcn.h>
#include <malloc.h>
#include <regex>
#include <set>
#include <sstream>

namespace
{

using Names = std::set<std::string>;

std::string library()
{
    return simulatorDirectory() + "/libqv-aux2.so.2.11";
}

// Returns the output of a tool, which must succeed.
std::string outputOf(const std::vector<std::string>& words)
{
    const Outcome outcome = runCommand({.words = words});
    EXPECT_EQ(outcome.status, 0) << words.front() << ": " << outcome.errors;
    return outcome.output;
}

Names namesIn(const std::string& text, const std::string& pattern)
{
    const std::vector<std::string> names = matches(pattern, text);
    return {names.begin(), names.end()};
}

// Returns the operations that the header of the device API declares.
Names declaredOperations()
{
    return namesIn(outputOf({PROJECT_DIRECTORY "/tools/device-operations"}), "(.+)\n");
}

// Returns the names that nm prints, without symbol versions.
Names symbols(const std::string& which, const std::string& file)
{
    return namesIn(outputOf({"nm", "-D", "--format=posix", which, file}), R"((?:^|\n)([^ @\n]+))");
}

Names neededLibraries(const std::string& file)
{
    return namesIn(outputOf({"readelf", "-d", "--wide", file}), R"(\(NEEDED\).*\[(.*)\])");
}

TEST(Program, NeedsOnlyTheDeviceLibraryAndTheCLibrary)
{
    Names needed = neededLibraries(programPath());
    EXPECT_EQ(needed.erase("libqv-aux2.so.2.11"), 1u);
    EXPECT_EQ(needed.erase("libc.so.6"), 1u);
    for (const std::string& rest : needed)
        EXPECT_TRUE(rest.starts_with("ld-linux")) << rest;
}

TEST(Program, IsInstalledWithoutASearchPath)
{
    const TemporaryDirectory directory;
    outputOf({CMAKE, "--install", buildDirectory(), "--prefix", directory.path});
    const std::string dynamic = outputOf({"readelf", "-d", directory / "bin/fobrob"});
    EXPECT_NE(dynamic.find("(NEEDED)"), std::string::npos);
    EXPECT_EQ(dynamic.find("PATH)"), std::string::npos) << dynamic;
    EXPECT_FALSE(fileExists(directory / "lib"));
}

// Only jump slots are bound lazily. Any other relocation is resolved at start-up and fails if the library
// lacks the operation.
TEST(Program, BindsDeviceOperationsLazily)
{
    const Names operations = declaredOperations();
    std::size_t slots = 0;
    for (const std::string& line : splitLines(outputOf({"readelf", "--relocs", "--wide", programPath()})))
    {
        std::istringstream words(line);
        std::string offset, info, type, value, name;
        words >> offset >> info >> type >> value >> name;
        if (!operations.contains(name.substr(0, name.find('@'))))
            continue;
        EXPECT_NE(type.find("_JUMP_SLO"), std::string::npos) << line;
        ++slots;
    }
    EXPECT_EQ(slots, operations.size());
    const std::string dynamic = outputOf({"readelf", "-d", "--wide", programPath()});
    EXPECT_FALSE(std::regex_search(dynamic, std::regex(R"(\((BIND_NOW\)|FLAGS.*NOW))"))) << dynamic;
}

TEST(ListOfOperations, HasEveryDeclaredOperation)
{
    EXPECT_EQ(listedOperations(), declaredOperations());
}

TEST(Program, CallsEveryDeclaredOperation)
{
    const Names wanted = symbols("--undefined-only", programPath());
    for (const std::string& operation : declaredOperations())
        EXPECT_TRUE(wanted.contains(operation)) << operation;
}

// Links a native program that calls a function.
Outcome linkCallOf(const std::string& function)
{
    const std::string source = "int " + function + "(void); int main(void) { return " + function + "(); }";
    const std::string library = BUILD_DIRECTORY "/src/device";
    const std::string script =
        "echo '" + source + "' | cc -o /dev/null -x c - -L " + library + " -ldevice-api";
    return runCommand({.words = {"sh", "-c", script}, .environment = {{"PATH", std::getenv("PATH")}}});
}

// Not with a unit's library, which may lack operations.
TEST(Program, IsLinkedWithTheOperationsOfTheHeaderAndNothingElse)
{
    EXPECT_EQ(linkCallOf("Buzzer_setVolume").status, 0);
    EXPECT_NE(linkCallOf("Buzzer_setVolumes").errors.find("undefined reference to `Buzzer_setVolumes'"),
              std::string::npos);
}

TEST(Simulator, ExportsTheDeclaredOperationsAndNothingElse)
{
    EXPECT_EQ(symbols("--defined-only", library()), declaredOperations());
}

TEST(Simulator, BindsItsFunctionsWhenItIsLoaded)
{
    const std::string dynamic = outputOf({"readelf", "-d", "--wide", library()});
    EXPECT_TRUE(std::regex_search(dynamic, std::regex(R"(\(FLAGS_1\).* NOW)"))) << dynamic;
}

bool isAmd64(const std::string& file)
{
    return outputOf({"readelf", "--file-header", file}).find("X86-64") != std::string::npos;
}

// Works only on files for this machine.
std::string codeOf(const std::string& function, const std::string& file)
{
    return outputOf({"objdump", "--no-show-raw-insn", "--disassemble=" + function, file});
}

// Returns the functions that begin with a landing pad for indirect calls (IBT). Works only on files for this
// machine.
Names functionsWithLandingPad(const std::string& file)
{
    Names names;
    std::string name;
    for (const std::string& line :
         splitLines(outputOf({"objdump", "--no-show-raw-insn", "--disassemble", file})))
    {
        if (line.find("\tendbr64") != line.npos)
            names.insert(name);
        name = line.ends_with(">:") ? matches("<(.+)>:", line).front() : "";
    }
    return names;
}

// Protection of the program and the simulated unit against memory errors. Intentional: because the program
// binds lazily, its table of operations stays writable.
class Hardening : public testing::TestWithParam<std::string>
{
protected:
    const bool isProgram = GetParam() == "Program";
    const std::string file = isProgram ? programPath() : library();

    std::string elf(const char* part) const
    {
        return outputOf({"readelf", "--wide", part, file});
    }
};

TEST_P(Hardening, HasNoWritableAndExecutableMemory)
{
    const std::string segments = elf("--program-headers");
    EXPECT_TRUE(std::regex_search(segments, std::regex(R"(GNU_STACK .* RW +0x)"))) << segments;
    EXPECT_EQ(segments.find("RWE"), std::string::npos) << segments;
}

TEST_P(Hardening, MakesRelocatedDataReadOnly)
{
    const std::string segments = elf("--program-headers");
    EXPECT_TRUE(std::regex_search(segments, std::regex(R"(GNU_RELRO .* R +0x)"))) << segments;
}

#ifdef FORTIFIED
TEST_P(Hardening, CallsFortifiedFunctions)
{
    const Names used = symbols("--undefined-only", file);
    EXPECT_TRUE(used.contains("__snprintf_chk"));
    EXPECT_FALSE(used.contains("snprintf"));
}
#endif

// The file itself lacks the IBT property, because the start-up objects of Debian 12 lack it. Functions that
// are only called directly need no landing pad.
TEST_P(Hardening, HasLandingPadsAtTheTargetsOfIndirectCalls)
{
    if (!isAmd64(file))
        return;
    const Names protectedFunctions = functionsWithLandingPad(file);
    Names entries = isProgram
                        ? namesIn(outputOf({"nm", "--extern-only", "--defined-only", file}), " T (.+)\n")
                        : declaredOperations();
    for (const char* startup : {"_init", "_fini", "_start"})
        entries.erase(startup);
    EXPECT_FALSE(entries.empty());
    for (const std::string& entry : entries)
        EXPECT_TRUE(protectedFunctions.contains(entry)) << entry;
}

// A search path takes precedence over the system's directories. DT_RPATH also takes precedence over
// LD_LIBRARY_PATH.
TEST_P(Hardening, HasNoSearchPath)
{
    EXPECT_EQ(elf("--dynamic").find("PATH)"), std::string::npos);
}

TEST_P(Hardening, IsPositionIndependent)
{
    EXPECT_NE(elf("--file-header").find("DYN"), std::string::npos);
    const std::string dynamic = elf("--dynamic");
    EXPECT_EQ(dynamic.find("TEXTREL"), std::string::npos);
    EXPECT_EQ(dynamic.find("Flags: PIE") != std::string::npos, isProgram);
}

INSTANTIATE_TEST_SUITE_P(Of, Hardening, testing::Values("Program", "Simulator"),
                         [](const auto& file) { return file.param; });

TEST(Program, DetectsAnOverwrittenStack)
{
    EXPECT_TRUE(symbols("--undefined-only", programPath()).contains("__stack_chk_fail"));
}

// Checks the code, because statically linked system libraries may import the symbol too.
TEST(Simulator, DetectsAnOverwrittenStack)
{
    if (!isAmd64(library()))
        return;
    EXPECT_NE(codeOf("Buzzer_getVolume", library()).find("__stack_chk_fail"), std::string::npos);
}

// The program needs no stack probes, because none of its stack frames is as large as a page.
TEST(Simulator, ProbesEveryPageOfALargeStackFrame)
{
    if (!isAmd64(library()))
        return;
    EXPECT_NE(outputOf({"objdump", "--disassemble", library()}).find("orq    $0x0,(%rsp)"),
              std::string::npos);
}

// Loads the simulated unit with dlopen, calls it and unloads it. Returns false if a call fails.
bool loadAndUnload()
{
    void* const loaded = dlopen(library().c_str(), RTLD_NOW);
    if (!loaded)
        return false;
    const auto get = reinterpret_cast<decltype(&GetBuzzer)>(dlsym(loaded, "GetBuzzer"));
    const auto set = reinterpret_cast<decltype(&Buzzer_setVolume)>(dlsym(loaded, "Buzzer_setVolume"));
    const auto release = reinterpret_cast<decltype(&Buzzer_release)>(dlsym(loaded, "Buzzer_release"));
    const BuzzerHandle handles[] = {get(), get(), get()};
    bool succeeded = true;
    for (const BuzzerHandle handle : handles)
        succeeded = set(handle, 40) == 0 && release(handle) == 0 && succeeded;
    return dlclose(loaded) == 0 && succeeded;
}

TEST(Simulator, LeaksNoMemoryWhenItIsUnloaded)
{
    if (!isAmd64(library()))
        return;
    const Unit unit;
    setenv("QVAUX_UNIT", unit.file().c_str(), 1);
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(loadAndUnload());
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(loadAndUnload());
    EXPECT_LT(mallinfo2().uordblks, before + 10000);
    unsetenv("QVAUX_UNIT");
    EXPECT_EQ(unit["/buzzer/volume"], 40);
}

} // namespace
