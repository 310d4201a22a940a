// The web engine tests share one application object, made before any test, offscreen.
#include <gtest/gtest.h>

#include <QApplication>

// For sanitizer builds: the web engine's own code deletes some objects through a base of another
// size, and it and the system libraries it starts keep allocations until the process ends.
extern "C" const char* __asan_default_options() {
    return "new_delete_type_mismatch=0";
}
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libQt6WebEngineCore.so\nleak:libudev.so\nleak:libfontconfig.so\n";
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", QByteArray("offscreen"));
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
