#include "cli.h"

int main(int argc, char** argv) { return tarnwick::cli::Main(argc, argv); }
