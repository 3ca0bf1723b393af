// A page of Cairo's that shows nothing: what is drawn on it or measured with it is all that it is for.
#pragma once

#include <cairo.h>

class UnseenPage {
 public:
  UnseenPage()
      : surface_(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr)),
        context_(cairo_create(surface_)) {}
  ~UnseenPage() {
    cairo_destroy(context_);
    cairo_surface_destroy(surface_);
  }
  UnseenPage(const UnseenPage&) = delete;
  UnseenPage& operator=(const UnseenPage&) = delete;
  cairo_t* context() const { return context_; }

 private:
  cairo_surface_t* surface_;
  cairo_t* context_;
};
