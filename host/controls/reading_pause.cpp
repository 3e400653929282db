#include "host/controls/reading_pause.h"

namespace host {

namespace {

int living = 0; // of the user-interface thread

} // namespace

ReadingPause::ReadingPause()
{
    ++living;
}

ReadingPause::~ReadingPause()
{
    --living;
}

bool ReadingPause::IsOn()
{
    return living > 0;
}

} // namespace host
