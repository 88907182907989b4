# The framework as a pod: a binary, made by ./dev xcframework. Releases set OZMIRA_RELEASES to where they are
# published; without it, the pod is what this folder has built.
releases = ENV.fetch('OZMIRA_RELEASES', "file://#{__dir__}/build")

Pod::Spec.new do |spec|
  spec.name = 'Ozmira'
  spec.version = '1.0.0'
  spec.summary = 'A static subset of SVG, drawn through CoreGraphics'
  spec.homepage = releases
  spec.license = { type: 'MIT', file: 'LICENSE' }
  spec.author = 'The Ozmira authors'
  spec.source = { http: "#{releases}/Ozmira.xcframework.zip" }
  spec.platform = :ios, '13.0'
  spec.vendored_frameworks = '{build/,}Ozmira.xcframework'
end
