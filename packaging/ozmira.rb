# The tool for Homebrew, from a checkout: brew install --HEAD ./packaging/ozmira.rb
class Ozmira < Formula
  desc "Draw, check and rewrite SVG icons for Ozmira"
  homepage "file://#{Pathname(__dir__).parent}/README.md"
  head "file://#{Pathname(__dir__).parent}", using: :git
  license "MIT"

  depends_on "cli11" => :build
  depends_on "cmake" => :build
  depends_on "highway" => :build
  depends_on "ninja" => :build
  depends_on "pkg-config" => :build
  depends_on "libdeflate"
  depends_on "libspng"
  depends_on macos: :ventura # its C++ library writes floating-point numbers
  uses_from_macos "expat"

  # Neither is among Homebrew's formulae.
  def caveats
    "RapidXML and Clipper 6 (polyclipping) must be installed, for example with vcpkg."
  end

  def install
    prefix_path = ENV["OZMIRA_PREFIX_PATH"] # where vcpkg has installed them
    system "cmake", "-S", ".", "-B", "build", "-G", "Ninja", "-DCMAKE_PREFIX_PATH=#{prefix_path}",
           "-DOZMIRA_API=OFF", "-DOZMIRA_BUILD_EXAMPLES=OFF", *std_cmake_args
    system "cmake", "--build", "build"
    system "cmake", "--install", "build"
  end

  test do
    (testpath/"icon.svg").write "<svg width='4' height='4'><rect width='4' height='4'/></svg>"
    system bin/"ozmira", "render", "icon.svg"
    assert_path_exists testpath/"icon.png"
  end
end
