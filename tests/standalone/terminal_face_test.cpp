#include "standalone/terminal/terminal_face.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "base/ansi.h"
#include "messages/tell.h"

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

void TellThree() {
    Tell(nullptr, eMessageId::MeshNoVisibleFaces, {}, "дуб"_ansi);
    Tell(nullptr, eMessageId::MeshDegenerate, {}, "дуб"_ansi);
    Tell(nullptr, eMessageId::PreviewEmptyCone, {.node = "oak"}, "дуб"_ansi);
}

// Would catch messages in the wrong encoding or language, further lines that look like messages of their own,
// and warnings or advice counted as errors.
TEST_F(TerminalFace, MessagesBecomeLinesInTheLanguageOfTheUser) {
    eTerminal russian = Terminal();
    russian.speaksRussian = true;
    {
        eTerminalFace face(russian);
        TellThree();
    }
    EXPECT_EQ(output.str(),
              "error: Кость 'дуб' помечена как полигональная, но видимых граней у нее нет!\n"
              "  Необходимо показать грани или убрать из параметров 'Poly'.\n"
              "warning: Есть вырожденные треугольники в мэше 'дуб'. Используйте WELD.\n"
              "advice: Конус просмотрового источника света \"дуб\" равен нулю.\n");
    output.str("");
    eTerminalFace face(Terminal());
    TellThree();
    EXPECT_EQ(output.str(),
              "error: The bone 'дуб' is marked as polygonal, but has no visible faces!\n"
              "  Show the faces or take 'Poly' out of the properties.\n"
              "warning: There are degenerate triangles in the mesh 'дуб'. Use WELD.\n"
              "advice: The cone of the preview light \"дуб\" is zero.\n");
    EXPECT_EQ(face.ErrorCount(), 1);
    ASSERT_EQ(face.Messages().size(), 3U);
    EXPECT_EQ(face.Messages()[1].title, "Предупреждение"_ansi);
    EXPECT_EQ(face.Messages()[2].title, "");
    EXPECT_EQ(face.Messages()[2].message.place.node, "oak");
}

// Would catch a quiet run that hides errors or forgets warnings in its counts.
TEST_F(TerminalFace, AQuietTerminalShowsErrorsOnly) {
    eTerminal quiet = Terminal();
    quiet.onlyErrors = true;
    quiet.showsProgress = true;
    eTerminalFace face(quiet);
    face.Start("stage");
    TellThree();
    face.End();
    EXPECT_THAT(output.str(), testing::StartsWith("error: The bone"));
    EXPECT_THAT(output.str(), testing::Not(testing::HasSubstr("degenerate")));
    EXPECT_EQ(face.Messages().size(), 3U);
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
        face.Start("Триангуляция дуб (1 of 2)..."_ansi);
        face.Update(50);
        face.Update(50);
        face.TellWarning("w");
        face.End();
    }
    const std::string erase = "\r\x1b[K";
    const std::string none = erase + "Triangulating дуб (1 of 2)... [....................] 0% 0:00";
    const std::string half = erase + "Triangulating дуб (1 of 2)... [##########..........] 50% 0:00";
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
    EXPECT_EQ(face.Messages().at(0).Severity(), eSeverity::Fatal);
    EXPECT_EQ(face.ErrorCount(), 1);
}

}  // namespace
