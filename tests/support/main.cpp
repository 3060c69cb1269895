#include "tests/support/watchdog.h"

int main(int argc, char** argv) { return dossierkit::tests::RunTests(argc, argv); }
