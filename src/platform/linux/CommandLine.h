#pragma once

#include <string>
#include <string_view>

namespace korvantis {

/// Rules over the bytes of `/proc/PID/cmdline`: words, each with a zero byte at its end.
namespace CommandLine {

/// What stands for the executable in it: the first word; where the program has written its whole
/// command line as one word, what comes before the first " --" of that. Empty when there is none.
std::string_view program(std::string_view bytes);

/// The block in which `KERN_PROCARGS2` answers: the number of words (int32), the executable path,
/// zero bytes, the words. Empty when there are no words: a zombie or a kernel thread.
std::string argumentBlock(std::string_view executable, std::string_view bytes);

}  // namespace CommandLine

}  // namespace korvantis
