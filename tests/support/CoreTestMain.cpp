// SPDX-License-Identifier: GPL-3.0-or-later
// main() of end-to-end tests: a QCoreApplication for QProcess and D-Bus.
#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
