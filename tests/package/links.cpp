// Linked with one library, of which it uses something. Ends with 0 if that works.
#include HEADER

int main() {
  return CONDITION ? 0 : 1;
}
