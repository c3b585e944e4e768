// Evaluates the right-hand side of fixed bodies again and again, for tools/count_instructions.py to count the
// instructions of it under valgrind.
//
//   count_right_hand_side evaluations columns rows "EQUATION..." [columns rows "EQUATION..."]...

#include <cstdio>
#include <cstdlib>
#include <exception>

#include "bench/RateCase.h"

/// What is counted. Its name is given to valgrind, so it keeps its plain form.
extern "C" [[gnu::noinline]] void countedEvaluations(VELMORA_BENCH::RateCase& body, long count) {
  for (long i = 0; i < count; ++i) body.evaluate();
}

int main(int argc, char* argv[]) {
  constexpr int ARGUMENTS_PER_BODY = 3;
  try {
    std::printf("compiler %s\noptions %s\n", VELMORA_COMPILER, VELMORA_OPTIONS);
    for (int i = 2; i + ARGUMENTS_PER_BODY <= argc; i += ARGUMENTS_PER_BODY) {
      VELMORA_BENCH::RateCase body(
          VELMORA_BENCH::RateBody{std::atoi(argv[i]), std::atoi(argv[i + 1]), argv[i + 2]});
      body.evaluate();  // every cell is decomposed for the first time
      countedEvaluations(body, std::atol(argv[1]));
      std::printf("cells %zu\n", body.nCells());
    }
    return EXIT_SUCCESS;
  } catch (const std::exception& ex) {
    std::fprintf(stderr, "%s\n", ex.what());
    return EXIT_FAILURE;
  }
}
