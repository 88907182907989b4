// A gallery of the icons in the application's folder "svg", with size, scale and tint. This file has never been
// compiled: nobody who works on Ozmira has a Mac.
import Ozmira
import SwiftUI

@main
struct IconGalleryApp: App {
    var body: some Scene {
        WindowGroup { GalleryView() }
    }
}

struct GalleryView: View {
    @State private var height = 48.0
    @State private var tint = Color.accentColor
    @Environment(\.displayScale) private var scale

    private let icons = try? OZMContainer.shared(for: Bundle.main.resourceURL!.appendingPathComponent("svg"))

    var body: some View {
        VStack {
            ScrollView {
                LazyVGrid(columns: [GridItem(.adaptive(minimum: 96))]) {
                    ForEach(icons?.documentNames ?? [], id: \.self) { name in
                        VStack {
                            icon(named: name)
                            Text(name).font(.caption)
                        }
                    }
                }
            }
            Slider(value: $height, in: 12...200, step: 4) { Text("Height") }
            ColorPicker("Tint", selection: $tint)
        }
        .padding()
    }

    @ViewBuilder
    private func icon(named name: String) -> some View {
        if let document = icons?.document(named: name),
           let image = document.image(height: height, scale: scale, defaultFillColor: UIColor(tint)) {
            Image(uiImage: image)
        } else {
            Image(systemName: "questionmark.square.dashed")
        }
    }
}
