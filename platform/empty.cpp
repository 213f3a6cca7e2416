// Placeholder translation unit for a game folder that has no sources yet.
