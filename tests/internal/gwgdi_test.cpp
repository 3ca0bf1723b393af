#include "base/gwgdi.h"

#include <gtest/gtest.h>

#include <string>

#include "gui_fixture.h"

namespace {

using tavdtest::Recording;

// An object that is deleted with the test.
class Object {
 public:
  explicit Object(tavd::gwobject object) : object_(object) {}
  ~Object() { tavd::gwdelete(object_); }
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  operator tavd::gwobject() const { return object_; }  // NOLINT(google-explicit-constructor)

  tgui_object_info info() const {
    tgui_object_info info{};
    EXPECT_EQ(tgui_get_object(static_cast<const tgui_object*>(object_), &info), 0);
    return info;
  }

 private:
  tavd::gwobject object_;
};

TEST(Select, NullObjectMakesNoCall) {
  Recording recording;
  EXPECT_EQ(tavd::gwselect(recording.hdc(), nullptr), nullptr);
  EXPECT_EQ(recording.text(), "");
}

TEST(Select, AnswersThePreviousObject) {
  Recording recording;
  const Object pen(tavd::gwcreatepen(tavd::kPenDot, 3, tavd::kRed));
  tavd::gwobject first = tavd::gwselect(recording.hdc(), pen);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(tavd::gwselect(recording.hdc(), first), static_cast<tavd::gwobject>(pen));
  EXPECT_EQ(recording.text(), "select pen dot width=3 colour=#FF0000\nselect stock black-pen\n");
}

TEST(Select, NullDeviceContextAnswersNull) {
  EXPECT_EQ(tavd::gwselect(nullptr, tavd::gwstockobject(tavd::kLightGreyBrush)), nullptr);
}

TEST(Delete, NullIsPassedOver) {
  EXPECT_EQ(tavd::gwdelete(nullptr), 0);
}

TEST(Delete, RemovesTheObject) {
  const int before = tgui_object_count();
  tavd::gwobject pen = tavd::gwcreatepen(tavd::kPenSolid, 1, tavd::kBlack);
  EXPECT_EQ(tgui_object_count(), before + 1);
  EXPECT_NE(tavd::gwdelete(pen), 0);
  EXPECT_EQ(tgui_object_count(), before);
}

TEST(Font, HeightIsThatOfTheCharacters) {
  const Object font(tavd::gwcreatefont(150, tavd::kWeightBold, 1, 1, "Microsoft Sans Serif"));
  const tgui_font asked = font.info().font;
  EXPECT_EQ(asked.height, -150);
  EXPECT_EQ(asked.weight, 700);
  EXPECT_EQ(asked.italic, 1);
  EXPECT_EQ(asked.underline, 1);
  EXPECT_EQ(asked.charset, 1);
  EXPECT_STREQ(asked.face, "Microsoft Sans Serif");
}

TEST(Font, EverythingElseIsZero) {
  const Object font(tavd::gwcreatefont(10, tavd::kWeightNormal, 0, 0, "Arial"));
  const tgui_font asked = font.info().font;
  EXPECT_EQ(asked.width, 0);
  EXPECT_EQ(asked.escapement, 0);
  EXPECT_EQ(asked.orientation, 0);
  EXPECT_EQ(asked.italic, 0);
  EXPECT_EQ(asked.underline, 0);
  EXPECT_EQ(asked.strikeout, 0);
}

TEST(Font, FaceOfFortyCharactersIsCutAfterThirtyOne) {
  const std::string face = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMN";
  ASSERT_EQ(face.size(), 40U);
  const Object font(tavd::gwcreatefont(10, tavd::kWeightNormal, 0, 0, face.c_str()));
  EXPECT_EQ(std::string(font.info().font.face), face.substr(0, 31));
}

TEST(Font, HeightAtTheEndOfItsTypeIsNegatedWhole) {
  const Object font(tavd::gwcreatefont(-32768, tavd::kWeightNormal, 0, 0, "Arial"));
  EXPECT_EQ(font.info().font.height, 32768);
}

TEST(Font, UpwardFontTurnsItsLineAndHasCharacterSetZero) {
  const Object font(tavd::gwcreatefont_upward(150, "Microsoft Sans Serif"));
  const tgui_font asked = font.info().font;
  EXPECT_EQ(asked.height, -150);
  EXPECT_EQ(asked.weight, 400);
  EXPECT_EQ(asked.escapement, 900);
  EXPECT_EQ(asked.orientation, 0);
  EXPECT_EQ(asked.charset, 0);
  EXPECT_STREQ(asked.face, "Microsoft Sans Serif");
}

TEST(Brush, IsSolidOfItsColour) {
  const Object brush(tavd::gwcreatebrush(0x123456));
  EXPECT_EQ(brush.info().kind, TGUI_BRUSH);
  EXPECT_EQ(brush.info().colour, 0x123456U);
}

TEST(Figures, LineMovesAndThenDraws) {
  Recording recording;
  tavd::gwline(recording.hdc(), 1, 2, 30, -40);
  EXPECT_EQ(recording.text(), "move 1 2\nline 1 2 30 -40\n");
}

TEST(Figures, CircleIsAnEllipseInItsSquare) {
  Recording recording;
  tavd::gwcircle(recording.hdc(), 100, 200, 30);
  EXPECT_EQ(recording.text(), "ellipse 70 170 130 230\n");
}

TEST(Figures, EllipseAndArcPassTheirPointsOn) {
  Recording recording;
  tavd::gwellipse(recording.hdc(), 1, 2, 3, 4);
  tavd::gwarc(recording.hdc(), 10, 20, 30, 40, 5, 6, 7, 8);
  EXPECT_EQ(recording.text(), "ellipse 1 2 3 4\narc 10 20 30 40 5 6 7 8\n");
}

TEST(TextOut, PrintsItsArguments) {
  Recording recording;
  tavd::gwtextout(recording.hdc(), 5, 6, "%s = %d %%", "qv", 42);
  EXPECT_EQ(recording.text(), "text 5 6 \"qv = 42 %\"\n");
}

TEST(TextOut, EmptyTextDrawsNothing) {
  Recording recording;
  tavd::gwtextout(recording.hdc(), 5, 6, "%s", "");
  EXPECT_EQ(recording.text(), "");
}

TEST(TextOut, LongTextIsCutAt255Characters) {
  Recording recording;
  tavd::gwtextout(recording.hdc(), 0, 0, "%s", std::string(255, 'a').c_str());
  tavd::gwtextout(recording.hdc(), 0, 1, "%s", std::string(1000, 'b').c_str());
  EXPECT_EQ(recording.text(),
            "text 0 0 \"" + std::string(255, 'a') + "\"\ntext 0 1 \"" + std::string(255, 'b') + "\"\n");
}

TEST(TextOut, CountedTextsTakeTheirLength) {
  Recording recording;
  tavd::gwtextoutn(recording.hdc(), 1, 2, "abcdef", 3);
  tavd::gwtextoutw(recording.hdc(), 3, 4, u"\u00C5bcdef", 2);
  EXPECT_EQ(recording.text(), "text 1 2 \"abc\"\ntextw 3 4 \"\u00C5b\"\n");
}

TEST(DrawingState, SettersAnswerTheFormerValue) {
  Recording recording;
  EXPECT_EQ(tavd::gwtextalign(recording.hdc(), tavd::kAlignCenterBottom), tavd::kAlignLeftTop);
  EXPECT_EQ(tavd::gwtextalign(recording.hdc(), tavd::kAlignRightTop), tavd::kAlignCenterBottom);
  EXPECT_EQ(tavd::gwtextcolour(recording.hdc(), tavd::kBlue), tavd::kBlack);
  EXPECT_EQ(tavd::gwtextcolour(recording.hdc(), tavd::kRed), tavd::kBlue);
  EXPECT_EQ(tavd::gwbkmode(recording.hdc(), tavd::kTransparent), TGUI_OPAQUE);
  EXPECT_EQ(tavd::gwbkmode(recording.hdc(), tavd::kTransparent), tavd::kTransparent);
  EXPECT_EQ(recording.text(),
            "align center+bottom\nalign right+top\ntext-colour #0000FF\ntext-colour #FF0000\n"
            "background transparent\nbackground transparent\n");
}

TEST(DrawingState, MappingIsPassedOnAndComesBackWithRestore) {
  Recording recording;
  const int saved = tavd::gwsavedc(recording.hdc());
  EXPECT_EQ(saved, 1);
  tavd::gwmapmode(recording.hdc(), tavd::kAnisotropic);
  tavd::gwwindoworg(recording.hdc(), 1, 2);
  tavd::gwwindowext(recording.hdc(), 10000, 10000);
  tavd::gwviewportorg(recording.hdc(), 3, 4);
  tavd::gwviewportext(recording.hdc(), 640, 480);
  tgui_state state{};
  ASSERT_EQ(tgui_surface_state(recording.hdc(), &state), 0);
  EXPECT_EQ(state.map_mode, TGUI_MM_ANISOTROPIC);
  EXPECT_EQ(state.window_org[1], 2);
  EXPECT_EQ(state.window_ext[0], 10000);
  EXPECT_EQ(state.viewport_org[0], 3);
  EXPECT_EQ(state.viewport_ext[1], 480);
  tavd::gwrestoredc(recording.hdc(), saved);
  ASSERT_EQ(tgui_surface_state(recording.hdc(), &state), 0);
  EXPECT_EQ(state.map_mode, TGUI_MM_TEXT);
}

TEST(NullDeviceContext, EveryOperationDoesNothing) {
  const Object pen(tavd::gwcreatepen(tavd::kPenSolid, 1, tavd::kBlack));
  EXPECT_EQ(tavd::gwselect(nullptr, pen), nullptr);
  EXPECT_EQ(tavd::gwtextalign(nullptr, tavd::kAlignRightTop), 0U);
  EXPECT_EQ(tavd::gwtextcolour(nullptr, tavd::kRed), 0U);
  EXPECT_EQ(tavd::gwbkmode(nullptr, tavd::kTransparent), 0);
  EXPECT_EQ(tavd::gwsavedc(nullptr), 0);
  tavd::gwline(nullptr, 0, 0, 1, 1);
  tavd::gwcircle(nullptr, 0, 0, 1);
  tavd::gwarc(nullptr, 0, 0, 1, 1, 0, 0, 1, 1);
  tavd::gwtextout(nullptr, 0, 0, "%d", 1);
  tavd::gwtextoutw(nullptr, 0, 0, u"a", 1);
  tavd::gwmapmode(nullptr, tavd::kAnisotropic);
  tavd::gwwindoworg(nullptr, 0, 0);
  tavd::gwwindowext(nullptr, 1, 1);
  tavd::gwviewportorg(nullptr, 0, 0);
  tavd::gwviewportext(nullptr, 1, 1);
  tavd::gwrestoredc(nullptr, 1);
}

TEST(PrintedText, WithoutAFormatIsNotDrawn) {
  Recording recording;
  const char* const none = nullptr;
  tavd::gwtextout(recording.hdc(), 1, 2, none);
  EXPECT_EQ(recording.text(), "");
}

}  // namespace
