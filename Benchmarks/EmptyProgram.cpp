/// The least that a C++ program can do: the measure of process start.
int main() {
  return 0;
}
