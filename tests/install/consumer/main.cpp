#include <znutil/znutil.h>

int main() {
  ZnString text("installed");
  text << " library";
  return text == "installed library" ? 0 : 1;
}
