#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "drawing.h"

namespace {

class Recording : public testing::Test {
 protected:
  tgui_surface* get() const { return owner_.get(); }
  std::string lines() { return taken(get()); }
  std::string selected(tgui_object* object) {
    tgui_select(get(), object);
    tgui_delete_object(object);
    return lines();
  }

 private:
  SurfaceOwner owner_ = recording();
};

TEST_F(Recording, WritesPens) {
  EXPECT_EQ(selected(tgui_create_pen(TGUI_PEN_SOLID, 10, 0)), "select pen solid width=10 colour=#000000\n");
  EXPECT_EQ(selected(tgui_create_pen(TGUI_PEN_DASH, 0, 0x0000FF)),
            "select pen dash width=0 colour=#FF0000\n");
  EXPECT_EQ(selected(tgui_create_pen(TGUI_PEN_DOT, 1, 0x00FF00)), "select pen dot width=1 colour=#00FF00\n");
  EXPECT_EQ(selected(tgui_create_pen(TGUI_PEN_DASHDOT, 1, 0xABCDEF)),
            "select pen dashdot width=1 colour=#EFCDAB\n");
  EXPECT_EQ(selected(tgui_create_pen(TGUI_PEN_NULL, 1, 0)), "select pen null width=1 colour=#000000\n");
}

TEST_F(Recording, WritesBrushesAndStockObjects) {
  EXPECT_EQ(selected(tgui_create_brush(0xFF8000)), "select brush solid colour=#0080FF\n");
  EXPECT_EQ(selected(tgui_stock_object(TGUI_LTGRAY_BRUSH)), "select stock ltgray-brush\n");
  EXPECT_EQ(selected(tgui_stock_object(TGUI_NULL_BRUSH)), "select stock null-brush\n");
  EXPECT_EQ(selected(tgui_stock_object(TGUI_BLACK_PEN)), "select stock black-pen\n");
  EXPECT_EQ(selected(tgui_stock_object(TGUI_ANSI_VAR_FONT)), "select stock ansi-var-font\n");
}

TEST_F(Recording, WritesFonts) {
  tgui_font font{};
  font.height = -400;
  font.weight = 400;
  font.escapement = 900;
  std::strcpy(font.face, "Microsoft Sans Serif");
  EXPECT_EQ(selected(tgui_create_font(&font)),
            "select font height=-400 weight=400 escapement=900 charset=0 italic=0 underline=0 strikeout=0 "
            "face=\"Microsoft Sans Serif\"\n");
  font = {12, 5, 0, 450, 700, 1, 1, 1, 1, "A\"b"};
  EXPECT_EQ(
      selected(tgui_create_font(&font)),
      "select font height=12 weight=700 escapement=0 charset=1 italic=1 underline=1 strikeout=1 width=5 "
      "orientation=450 face=\"A\\\"b\"\n");
}

TEST_F(Recording, WritesAlignments) {
  for (const auto& [align, line] : {std::pair(0U, "align left+top\n"),
                                    {2U, "align right+top\n"},
                                    {6U, "align center+top\n"},
                                    {8U, "align left+bottom\n"},
                                    {10U, "align right+bottom\n"},
                                    {14U, "align center+bottom\n"},
                                    {24U, "align left+baseline\n"},
                                    {30U, "align center+baseline\n"},
                                    {1U, "align 0x1\n"},
                                    {4U, "align 0x4\n"},
                                    {16U, "align 0x10\n"},
                                    {0xFFFFFFFFU, "align 0xFFFFFFFF\n"}}) {
    tgui_set_text_align(get(), align);
    EXPECT_EQ(lines(), line);
  }
}

TEST_F(Recording, WritesColoursAndModes) {
  tgui_set_text_colour(get(), 0x030201);
  tgui_set_background_mode(get(), TGUI_TRANSPARENT);
  tgui_set_background_mode(get(), TGUI_OPAQUE);
  tgui_set_map_mode(get(), TGUI_MM_ANISOTROPIC);
  tgui_set_map_mode(get(), TGUI_MM_TEXT);
  EXPECT_EQ(lines(),
            "text-colour #010203\nbackground transparent\nbackground opaque\nmap anisotropic\nmap text\n");
}

TEST_F(Recording, WritesFigures) {
  tgui_move_to(get(), 10, 20);
  tgui_line_to(get(), 30, 40);
  tgui_line_to(get(), INT_MIN, INT_MAX);
  tgui_ellipse(get(), 1, -2, 3, -4);
  tgui_arc(get(), 1, 2, 3, 4, 5, 6, 7, 8);
  EXPECT_EQ(lines(),
            "move 10 20\nline 10 20 30 40\nline 30 40 -2147483648 2147483647\nellipse 1 -2 3 -4\n"
            "arc 1 2 3 4 5 6 7 8\n");
}

TEST_F(Recording, WritesMappingSavingAndRestoring) {
  tgui_set_map_mode(get(), TGUI_MM_ANISOTROPIC);
  tgui_set_window_org(get(), 1, 2);
  tgui_set_window_ext(get(), 10000, 10000);
  tgui_set_viewport_org(get(), 3, 4);
  tgui_set_viewport_ext(get(), 5, 6);
  tgui_save(get());
  tgui_save(get());
  tgui_restore(get(), -2);
  tgui_restore(get(), 1);
  EXPECT_EQ(lines(),
            "map anisotropic\nwindow-org 1 2\nwindow-ext 10000 10000\nviewport-org 3 4\nviewport-ext 5 6\n"
            "save 1\nsave 2\nrestore 1\n");
}

TEST_F(Recording, WritesNarrowTextsAsUtf8) {
  tgui_text(get(), 1, -2, "Flow, l/s and more", 9);
  tgui_text(get(), 0, 0, "\xE5\x80\xFF", 3);  // windows-1252: a ring, euro, y diaeresis
  EXPECT_EQ(lines(), "text 1 -2 \"Flow, l/s\"\ntext 0 0 \"\xC3\xA5\xE2\x82\xAC\xC3\xBF\"\n");
}

TEST_F(Recording, EscapesWhatWouldBreakALine) {
  tgui_text(get(), 0, 0, "a\"b\\c\r\n\td\0e\x7F\x81", 13);
  EXPECT_EQ(lines(), "text 0 0 \"a\\\"b\\\\c\\r\\n\\td\\u0000e\\u007F\\u0081\"\n");
}

TEST_F(Recording, WritesWideTextsWithPairsWholeAndHalvesAsNumbers) {
  const tavd_wchar text[] = {u'x', 0xD83D, 0xDE00, 0xD800, u'y', 0xDC00};
  tgui_textw(get(), 5, 6, text, 6);
  EXPECT_EQ(lines(), "textw 5 6 \"x\xF0\x9F\x98\x80\\uD800y\\uDC00\"\n");
}

TEST_F(Recording, CountsAndClearsLines) {
  EXPECT_STREQ(tgui_recording_text(get()), "");
  tgui_move_to(get(), 1, 1);
  tgui_move_to(get(), 1, 1);
  EXPECT_EQ(tgui_recording_count(get()), 2);
  tgui_recording_clear(get());
  EXPECT_EQ(tgui_recording_count(get()), 0);
  EXPECT_STREQ(tgui_recording_text(get()), "");
  tgui_line_to(get(), 2, 2);
  EXPECT_EQ(lines(), "line 1 1 2 2\n");
}

TEST_F(Recording, RefusedObjectsLeaveNoLine) {
  tgui_object* const pen = tgui_create_pen(0, 1, 0);
  tgui_delete_object(pen);
  tgui_select(get(), pen);
  tgui_select(get(), nullptr);
  EXPECT_EQ(lines(), "");
}

}  // namespace
