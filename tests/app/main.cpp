#include <QApplication>
#include <gtest/gtest.h>

// Widget tests need one application object for the whole run.
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
