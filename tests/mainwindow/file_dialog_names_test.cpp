#include "mainwindow/file_dialog_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace tidemark {
namespace {

TEST(FileDialogNames, OneElementIsAFullPath) {
    EXPECT_THAT(PathsFromFileDialog("C:\\data\\a b.txt"), ElementsAre("C:\\data\\a b.txt"));
    EXPECT_THAT(PathsFromFileDialog("C:\\data\\a.txt\0\0"sv), ElementsAre("C:\\data\\a.txt"));
}

TEST(FileDialogNames, MoreElementsAreAFolderAndTheNamesInIt) {
    EXPECT_THAT(PathsFromFileDialog("C:\\data\0b.txt\0a.txt\0\0"sv),
                ElementsAre("C:\\data\\b.txt", "C:\\data\\a.txt"));
}

TEST(FileDialogNames, ADrivesRootKeepsItsOneBackslash) {
    EXPECT_THAT(PathsFromFileDialog("C:\\\0one\0two"sv), ElementsAre("C:\\one", "C:\\two"));
}

TEST(FileDialogNames, WhatStandsInTheBufferAfterTheNamesIsNoName) {
    EXPECT_THAT(PathsFromFileDialog("C:\\data\0b.txt\0\0old.txt\0"sv),
                ElementsAre("C:\\data\\b.txt"));
    EXPECT_THAT(PathsFromFileDialog("C:\\data\\b.txt\0\0old.txt"sv),
                ElementsAre("C:\\data\\b.txt"));
}

TEST(FileDialogNames, NothingReturnedAddsNothing) {
    EXPECT_THAT(PathsFromFileDialog(""), IsEmpty());
    EXPECT_THAT(PathsFromFileDialog("\0\0"sv), IsEmpty());
}

TEST(EndOfFileDialog, OnlyADialogThatEndsWithoutACodeWasCancelled) {
    EXPECT_EQ(EndOfFileDialog(0), FileDialogEnd::kCancelled);
    EXPECT_EQ(EndOfFileDialog(0x3003), FileDialogEnd::kTooManyNames);
    EXPECT_EQ(EndOfFileDialog(0xFFFF), FileDialogEnd::kFailed) << "no dialog was made";
    EXPECT_EQ(EndOfFileDialog(0x3002), FileDialogEnd::kFailed);
}

}  // namespace
}  // namespace tidemark
