# Run by zel_generate_metamodel behind the generator: writes into LIST the names of the headers and sources below ROOT,
# relative to ROOT, and leaves LIST alone if it holds them already.
file(GLOB_RECURSE files RELATIVE ${ROOT} ${ROOT}/*.h ${ROOT}/*.cpp)
list(SORT files)
list(JOIN files "\n" text)
file(CONFIGURE OUTPUT ${LIST} CONTENT "${text}\n" @ONLY)
