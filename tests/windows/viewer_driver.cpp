// Drives the viewer as a user would, and checks what its window then says and shows.
//
//   viewer_driver run VIEWER DATABASE VARIANT NO-DATABASE FOLDER
//     VARIANT is a database with throw lines that no parameter chooses and without fans, NO-DATABASE a file
//     of another kind; pictures and results go to FOLDER. The result is the number of failed checks.
//   viewer_driver like A.png B.png
//     Tells how alike two pictures are, -100 to 100 per cent, and how far apart their blue points, per
//     thousand of the width.
#include <windows.h>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "viewer_pixels.h"
#include "viewer_run.h"

namespace drive {
namespace {

constexpr int kBadCall = 99;
constexpr Colour kBlue = {0, 0, 255};
constexpr int kBluePointSlack = 100;  // its lines are softened on Linux

int run(const std::vector<std::wstring>& arguments) {
  const PictureFiles files;
  if (arguments.size() == 4 && arguments[1] == L"like") {
    const Picture a = load_png(arguments[2]);
    const Picture b = load_png(arguments[3]);
    std::printf("%d %d\n", static_cast<int>(likeness(a, b) * 100),
                static_cast<int>(distance_of(a, b, kBlue, kBluePointSlack) * 1000));
    return 0;
  }
  if (arguments.size() != 7 || arguments[1] != L"run") return kBadCall;
  return Run(arguments[2], arguments[3], arguments[4], arguments[5], arguments[6]).all();
}

}  // namespace
}  // namespace drive

int wmain(int count, wchar_t** arguments) {
  try {
    return drive::run({arguments, arguments + count});
  } catch (const std::exception& error) {
    std::printf("FAILED: %s\n", error.what());
    return drive::kBadCall;
  }
}
