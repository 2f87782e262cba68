#include <gmock/gmock.h>

#include <QApplication>

namespace {

/// Making a QApplication leaves the upper halves of the vector registers marked as in use (Qt 6.4
/// on x86-64), and until they are released all scalar arithmetic of the thread takes three times as
/// long: measured on the pass search.
void releaseVectorRegisters() {
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx")) asm volatile("vzeroupper");
#endif
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    releaseVectorRegisters();
    return RUN_ALL_TESTS();
}
