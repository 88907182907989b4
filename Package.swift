// swift-tools-version:5.9
// The framework as a Swift package: a binary, made by ./dev xcframework and attached to each release.
import PackageDescription

let package = Package(
    name: "Ozmira",
    platforms: [.iOS(.v13)],
    products: [.library(name: "Ozmira", targets: ["Ozmira"])],
    targets: [.binaryTarget(name: "Ozmira", path: "build/Ozmira.xcframework")]
)
