#pragma once

/// Names the current thread, for debuggers and samplers, where the system can do it.
void name_current_thread(const char* name);
