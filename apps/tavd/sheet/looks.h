// How texts and rules look, the same on every page of a document.
#pragma once

#include "sheet/layout.h"
#include "sheet/page_writer.h"

namespace tavdhost::looks {

// 0x00BBGGRR. Print has no more than black: greys and the colour of links stay legible there.
inline constexpr std::uint32_t kBlack = 0x000000;
inline constexpr std::uint32_t kGrey = 0x606060;
inline constexpr std::uint32_t kPaleGrey = 0xC8C8C8;
inline constexpr std::uint32_t kLinkBlue = 0x8B3A00;

inline constexpr TextLook kTitle = {kSheetLetters.title, true, kBlack};
inline constexpr TextLook kDescription = {kSheetLetters.description, false, kBlack};
inline constexpr TextLook kHeading = {kSheetLetters.heading, true, kBlack};
inline constexpr TextLook kPageKind = {kSheetLetters.heading, false, kGrey};
inline constexpr TextLook kText = {kSheetLetters.text, false, kBlack};
inline constexpr TextLook kBoldText = {kSheetLetters.text, true, kBlack};
inline constexpr TextLook kPaleText = {kSheetLetters.text, false, kGrey};
inline constexpr TextLook kSmall = {kSheetLetters.small_text, false, kGrey};
inline constexpr TextLook kSmallBlack = {kSheetLetters.small_text, false, kBlack};
inline constexpr TextLook kSmallBold = {kSheetLetters.small_text, true, kBlack};
inline constexpr TextLook kLink = {kSheetLetters.text, true, kLinkBlue};

inline constexpr double kRule = 0.25;      // mm, below a heading
inline constexpr double kPaleRule = 0.12;  // mm, between the rows of a table

}  // namespace tavdhost::looks
