// The least that a C++ program can be.
int main() {}
