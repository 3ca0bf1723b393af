#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <sstream>

#include "plotters.h"

namespace bench {

namespace {

[[noreturn]] void give_up(const char* why) {
  std::fprintf(stderr, "gnuplot: %s\n", why);
  std::exit(2);
}

const char* terminal(Format format) {
  switch (format) {
    case Format::kPng:
      return "pngcairo size 700,700 noenhanced";
    case Format::kSvg:
      return "svg size 700,700 noenhanced";
    default:
      return "pdfcairo size 9.7222in,9.7222in noenhanced";
  }
}

std::string rgb(std::uint32_t colour) {
  char text[20];
  std::snprintf(text, sizeof text, "rgb '#%02x%02x%02x'", colour & 0xFF, colour >> 8 & 0xFF,
                colour >> 16 & 0xFF);
  return text;
}

// Texts and circles are kept by the process and stand on every plot.
void set_labels(std::ostringstream& out, const Sketch& sketch) {
  static constexpr const char* kAlign[] = {"left", "center", "right"};
  for (const SketchText& t : sketch.texts) {
    const double rise = (t.above == 0 ? 0.35 : 0.5 * t.above) * t.size;
    out << "set label '" << t.text << "' at " << t.x << ',' << t.y - rise << ' ' << kAlign[t.align + 1]
        << " rotate by " << t.angle << " font 'Arial," << t.size * 0.75 << "' tc " << rgb(t.colour) << '\n';
  }
  for (const SketchEllipse& e : sketch.ellipses) {
    out << "set object ellipse center " << e.x << ',' << e.y << " size " << 2 * e.rx << ',' << 2 * e.ry
        << " fc " << rgb(e.fill) << " fs solid border lc " << rgb(e.pen.colour) << '\n';
  }
}

}  // namespace

Gnuplot::Gnuplot() {
  int in[2], out[2];
  if (pipe(in) != 0 || pipe(out) != 0) give_up("no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in[0], 0);
  posix_spawn_file_actions_adddup2(&actions, out[1], 1);
  posix_spawn_file_actions_addclose(&actions, in[1]);
  posix_spawn_file_actions_addclose(&actions, out[0]);
  char name[] = "gnuplot";
  char* arguments[] = {name, nullptr};
  if (posix_spawnp(&process_, name, &actions, nullptr, arguments, environ) != 0) give_up("not started");
  posix_spawn_file_actions_destroy(&actions);
  close(in[0]);
  close(out[1]);
  to_ = in[1];
  from_ = out[0];
  signal(SIGPIPE, SIG_IGN);
}

Gnuplot::~Gnuplot() {
  close(to_);
  close(from_);
  waitpid(process_, nullptr, 0);
}

void Gnuplot::prepare(const Sketch& sketch, Format format) {
  std::map<SketchPen, std::string> points;
  for (const SketchLine& line : sketch.lines) {
    std::ostringstream rows;
    for (std::size_t i = 0; i < line.x.size(); ++i) rows << line.x[i] << ' ' << line.y[i] << '\n';
    points[line.pen] += rows.str() + '\n';  // an empty row ends a line
  }
  std::ostringstream out;
  out << "set output\nreset\nset print '-'\nset terminal " << terminal(format)
      << "\nset margins 0,0,0,0\nunset border\nunset tics\nunset key\nset xrange [0:" << kPictureSide
      << "]\nset yrange [" << kPictureSide << ":0]\n";
  set_labels(out, sketch);
  plot_ = "plot ";
  int number = 0;
  for (const auto& [pen, rows] : points) {
    out << "$pen" << number << " << EOD\n" << rows << "EOD\n";
    plot_ += (number > 0 ? ", $pen" : "$pen") + std::to_string(number) + " with lines lw " +
             std::to_string(pen.width) + " dt " + std::to_string(pen.style + 1) + " lc " + rgb(pen.colour);
    ++number;
  }
  say(out.str());
}

void Gnuplot::draw(const std::string& path) {
  say("set output '" + path + "'\n" + plot_ + "\nset output\nprint 'k'\n");
  char answer[2];
  for (int got = 0; got < 2;) {
    const ssize_t n = read(from_, answer + got, static_cast<std::size_t>(2 - got));
    if (n <= 0) give_up("it ended");
    got += static_cast<int>(n);
  }
}

void Gnuplot::say(const std::string& commands) {
  for (std::size_t done = 0; done < commands.size();) {
    const ssize_t n = write(to_, commands.data() + done, commands.size() - done);
    if (n <= 0) give_up("it takes no commands");
    done += static_cast<std::size_t>(n);
  }
}

}  // namespace bench
