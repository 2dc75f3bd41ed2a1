// A board library of long ago, as far as it matters: it can be loaded and bound, and lacks nearly all. The one
// function that it has answers its own path as the board.

void* Brd_InitEx(const char* path, unsigned boardIndex, int flags);

void* Brd_InitEx(const char* path, unsigned boardIndex, int flags)
{
    return boardIndex == 0 && flags == 0 ? (void*)path : 0;
}
