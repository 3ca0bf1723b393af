// The flow chart of a product with PLplot: with_plplot CHART.png FLOW PRESSURE < TABLE, a table of a row for
// each point with the number of its curve, its family, its value, x and y.
#include <plplot/plplot.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

struct Curve {
  std::string family;
  std::string value;
  std::vector<double> x, y;  // logarithms, as the library's axes have them
};

std::map<int, Curve> read_curves() {
  std::map<int, Curve> curves;
  int number = 0;
  double x = 0;
  double y = 0;
  std::string family;
  std::string value;
  while (std::cin >> number >> family >> value >> x >> y) {
    Curve& curve = curves[number];
    curve.family = family;
    curve.value = value;
    curve.x.push_back(std::log10(x));
    curve.y.push_back(std::log10(y));
  }
  return curves;
}

void draw(const Curve& curve) {
  const bool is_level = curve.family == "level";
  plcol0(is_level ? 1 : 15);
  pllsty(is_level ? 2 : 1);
  plline(static_cast<PLINT>(curve.x.size()), curve.x.data(), curve.y.data());
  pllsty(1);
  plptex(curve.x.back(), curve.y.back(), 1, 0, 0, curve.value.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: with_plplot CHART.png FLOW PRESSURE < TABLE\n", stderr);
    return 2;
  }
  plsdev("pngcairo");
  plsfnam(argv[1]);
  plspage(0, 0, 1065, 480, 0, 0);
  plscolbg(255, 255, 255);
  plscol0(15, 0, 0, 0);
  plscol0(1, 200, 0, 0);
  plscol0(9, 0, 0, 200);
  plinit();
  plcol0(15);
  plschr(0, 0.8);
  pladv(0);
  plvsta();
  plwind(std::log10(15), std::log10(170), std::log10(4.5), std::log10(330));
  plbox("bcnlstgh", 0, 0, "bcnlstgh", 0, 0);
  pllab("Flow q#dv#u, l/s", "Total pressure #gDp#dt#u, Pa", "");
  for (const auto& [number, curve] : read_curves()) draw(curve);
  plcol0(9);
  const double x = std::log10(std::atof(argv[2]));
  const double y = std::log10(std::atof(argv[3]));
  plpoin(1, &x, &y, 4);
  plend();
}
