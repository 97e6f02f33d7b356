// The main program of every test: one apartment from the first test to the last.
#include <gtest/gtest.h>
#include <windows.h>

int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  const HRESULT initialized = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  if (FAILED(initialized)) return EXIT_FAILURE;
  const int result = RUN_ALL_TESTS();
  CoUninitialize();
  return result;
}
