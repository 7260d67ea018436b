// What this program has attached; see guarded_attach.cpp.
#pragma once

/// Lets go of every segment but the one at `kept`: of what a client held that refused it.
void detach_all_but(const void* kept);
