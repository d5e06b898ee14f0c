// SPDX-License-Identifier: GPL-3.0-or-later
// main() of widget tests: a real QApplication on the offscreen platform, so
// widgets lay out and paint as they do on a desktop, without one.
#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
