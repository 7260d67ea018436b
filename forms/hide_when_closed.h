// Windows that their owner deletes, and the toolkit's queue of used widgets.
#pragma once
#include <FL/Fl_Window.H>

/// Closing the window (by its manager, or by Escape) hides it, and does no more. Without this the
/// toolkit also queues it for Fl::readqueue, and leaves it in the queue when it is deleted.
inline void hide_when_closed(Fl_Window* window) {
    window->callback([](Fl_Widget* closed, void*) { closed->hide(); });
}
