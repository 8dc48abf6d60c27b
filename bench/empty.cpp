// A program that does nothing but load the libraries of the real one.

int main() {}
