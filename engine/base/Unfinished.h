// Files that nobody wants unless they are finished.
#pragma once

namespace unfinished {

// The file of this name goes if the program ends at once. The text must stay where it is until it
// is struck off. Of more than 64 files at a time, the others stay.
void add(const char* name);
void strikeOff(const char* name);

// Removes these files. May be called by a signal handler.
void removeAll();

}    // namespace unfinished
