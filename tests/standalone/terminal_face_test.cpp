#include "standalone/terminal/terminal_face.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/ansi.h"
#include "base/user_message.h"

namespace {

using namespace standalone;

class TerminalFace : public ::testing::Test {
protected:
    eTerminal Terminal() { return {&output, &input, false, false, false}; }

    std::ostringstream output;
    std::istringstream input;
};

const platform::eMessageBox kDiskFull{
    .text = "disk full", .title = "Ошибка"_ansi, .buttons = platform::eBoxButtons::RetryCancel};

// Would catch boxes in the wrong encoding, further lines that look like messages of their own, and warnings
// counted as errors.
TEST_F(TerminalFace, BoxesBecomeLinesInUtf8) {
    eTerminalFace face(Terminal());
    ShowError(nullptr, "Нечего экспортировать!\nВозможно, скрыта корневая кость."_ansi);
    ShowWarning(nullptr, "Следует убрать\n"_ansi);
    EXPECT_EQ(output.str(),
              "error: Нечего экспортировать!\n  Возможно, скрыта корневая кость.\nwarning: Следует убрать\n");
    EXPECT_EQ(face.ErrorCount(), 1);
    EXPECT_EQ(face.WarningCount(), 1);
    ASSERT_EQ(face.Messages().size(), 2U);
    EXPECT_EQ(face.Messages()[1].title, "Предупреждение"_ansi);
}

// Would catch a quiet run that hides errors or forgets warnings in its counts.
TEST_F(TerminalFace, AQuietTerminalShowsErrorsOnly) {
    eTerminal quiet = Terminal();
    quiet.onlyErrors = true;
    quiet.showsProgress = true;
    eTerminalFace face(quiet);
    face.Start("stage");
    ShowWarning(nullptr, "w");
    ShowError(nullptr, "e");
    face.End();
    EXPECT_EQ(output.str(), "error: e\n");
    EXPECT_EQ(face.WarningCount(), 1);
}

// Would catch a run that hangs on a question nobody can answer, or takes silence for Retry.
TEST_F(TerminalFace, QuestionsAreAskedOnlyWhereSomebodyAnswers) {
    {
        input.str("r\n");
        eTerminalFace face(Terminal());
        EXPECT_EQ(platform::ShowMessageBox(kDiskFull), platform::eBoxAnswer::Cancel);
    }
    eTerminal asked = Terminal();
    asked.answers = true;
    eTerminalFace face(asked);
    input.str("what\nr\n");
    EXPECT_EQ(platform::ShowMessageBox(kDiskFull), platform::eBoxAnswer::Retry);
    EXPECT_EQ(platform::ShowMessageBox(kDiskFull), platform::eBoxAnswer::Cancel) << "the input has ended";
}

// Would catch progress in a log file, and a message glued to the progress line.
TEST_F(TerminalFace, ProgressIsALineThatMessagesInterrupt) {
    eTerminal watched = Terminal();
    watched.showsProgress = true;
    {
        eTerminalFace face(watched);
        face.Start("Запись"_ansi);
        face.Update(50);
        face.Update(50);
        ShowWarning(nullptr, "w");
        face.End();
    }
    const std::string erase = "\r\x1b[K";
    const std::string none = erase + "Запись [....................] 0% 0:00";
    const std::string half = erase + "Запись [##########..........] 50% 0:00";
    EXPECT_EQ(output.str(), none + half + erase + "warning: w\n" + half + erase);
    output.str("");
    eTerminalFace face(Terminal());
    face.Start("stage");
    face.Update(50);
    face.End();
    EXPECT_EQ(output.str(), "");
}

// Would catch a fatal error told as one that the run survived.
TEST_F(TerminalFace, TheTopMostBoxIsFatal) {
    eTerminalFace face(Terminal());
    platform::ShowMessageBox({.text = "broken", .title = "x", .topMost = true});
    EXPECT_EQ(face.Messages().at(0).kind, eMessageKind::Fatal);
    EXPECT_EQ(face.ErrorCount(), 1);
}

}  // namespace
