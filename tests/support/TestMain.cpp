#include "TestMain.h"

#include <cstdio>
#include <map>
#include <string_view>

namespace quillmere {

namespace {

std::map<std::string_view, TestMain::Run>& testClasses()
{
    static std::map<std::string_view, TestMain::Run> classes;
    return classes;
}

} // namespace

TestMain::Registration::Registration(const char* testClass, Run run)
{
    testClasses().emplace(testClass, run);
}

} // namespace quillmere

int main(int argc, char** argv)
{
    using namespace quillmere;
    const auto test = argc > 1 ? testClasses().find(argv[1]) : testClasses().end();
    if (test != testClasses().end())
        return test->second(argc - 1, argv + 1);
    std::fputs("Name one of these test classes:\n", stderr);
    for (const auto& [name, run] : testClasses())
        std::fprintf(stderr, "  %s\n", name.data());
    return 2;
}
