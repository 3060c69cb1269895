// Does nothing: a precompiled header is made for a program of its own.
int main() { return 0; }
