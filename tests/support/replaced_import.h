#pragma once

namespace tidemark {

// Puts a stand-in in the place of a function that this program imports from the system, while
// alive. For calls that nothing but the system itself could answer in a test.
class ReplacedImport {
  public:
    // `function` is the name it is imported by, `stand_in` has its signature. The test fails when
    // the program does not import it.
    template <typename Function>
    ReplacedImport(const char* function, Function* stand_in)
        : ReplacedImport(function, reinterpret_cast<void*>(stand_in)) {}
    ReplacedImport(const char* function, void* stand_in);
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;
    ~ReplacedImport();

  private:
    void** slot_;
    void* original_ = nullptr;
};

}  // namespace tidemark
