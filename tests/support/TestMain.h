#pragma once

#include <QGuiApplication>
#include <QTest>

/**
 * Main function of the test programs. A program contains many test classes: `program TestClass [ARGUMENTS]` runs one, and
 * passes the arguments to Qt Test.
 */
namespace quillmere::TestMain {

using Run = int (*)(int argc, char** argv);

struct Registration
{
    Registration(const char* testClass, Run run);
};

/** For tests that run before an application object exists. */
struct NoApplication
{
    NoApplication(int&, char**) {}
};

template<typename Test, typename Application>
int run(int argc, char** argv)
{
    [[maybe_unused]] Application application(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi); // as QTEST_MAIN does
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace quillmere::TestMain

/** Adds a test class to its program. `Application` is QGuiApplication, QCoreApplication or TestMain::NoApplication. */
#define QUILLMERE_TEST(Test, Application)                                                                              \
    static const TestMain::Registration registered##Test(#Test, &TestMain::run<Test, Application>);
